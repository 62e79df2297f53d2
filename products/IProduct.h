// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Everything that the program checks and shows in its table.
#pragma once

#include "net/IDownloader.h"
#include "platform/text/CAtlString.h"
#include "products/IDecisionObserver.h"

#include <QList>
#include <QString>
#include <boost/shared_ptr.hpp>
#include <vector>

class CProductsByKey;
class TiXmlElement;

// One product, gallery content or notification. It has zero or more items, each a row of the table;
// operations that take an item take its index, from 0 to GetItemCount() - 1. GUI thread only; products are
// shared, and live as long as a list, the controller or a row's action holds them.
//
// Calling order: Init, FindInstalled, ApplyDisablers, SetRow, SetDownloader and CheckForUpdates, SetRow for
// the items that only the check has found; RunAction on demand.
class IProduct {
public:
    using List = std::vector<boost::shared_ptr<IProduct>>;

    virtual ~IProduct() = default;

    // Reads the product's element of the product list; false when it is null or unusable.
    virtual bool Init(const TiXmlElement* element) = 0;
    // Looks on this machine for what the product describes; true when something was found.
    virtual bool FindInstalled() = 0;
    // Fetches and reads the remote descriptions with the downloader; true when that succeeded. False without
    // a downloader.
    virtual bool CheckForUpdates() = 0;
    // The name by which disablers refer to the product.
    virtual CAtlString GetKey() const = 0;
    virtual QString GetName() const = 0;
    // The item's remote description was read.
    virtual bool IsChecked(unsigned item) const = 0;
    // The item has something new for the user.
    virtual bool IsUpdateAvailable(unsigned item) const = 0;
    // The user still wants to hear of the item.
    virtual bool IsWanted(unsigned item) const = 0;
    // The item's row gets a button.
    virtual bool HasAction(unsigned item) const = 0;
    // Does what the button stands for; true when that succeeded.
    virtual bool RunAction(unsigned item) = 0;
    virtual bool IsHighlighted(unsigned item) const = 0;
    virtual unsigned GetItemCount() const = 0;
    // Texts of the columns "Installed version" and "Latest version".
    virtual CAtlString GetInstalledVersion(unsigned item) const = 0;
    virtual CAtlString GetLatestVersion(unsigned item) const = 0;
    // The item's row in the table. Negative for a notice without one; else without meaning before SetRow.
    virtual void SetRow(unsigned item, int row) = 0;
    virtual int GetRow(unsigned item) const = 0;
    // Captions of the button: entry 0 without, entry 1 with an available update.
    virtual QList<QString> GetActionTexts() const = 0;
    // Lets this product react to the others of its list; does nothing by default.
    virtual void ApplyDisablers(const CProductsByKey& /*all*/) {}
    // The name under which the product's description files are found.
    virtual CAtlString GetDescriptionName() const = 0;
    // The address that CheckForUpdates fetches; empty when it will fetch nothing.
    virtual CAtlString GetCheckAddress() const { return {}; }
    // True for the one item that is checked, among versions installed side by side.
    virtual bool IsCurrent(unsigned /*item*/) const { return true; }
    // Another product keeps this one from offering updates.
    virtual bool IsDisabled() const { return false; }
    // The name of that product; empty while this one may offer updates.
    virtual QString GetDisablerName() const { return {}; }
    // What the item is offered, in words that change when something newer is offered; empty when the item
    // cannot be skipped.
    virtual CAtlString GetOffer(unsigned /*item*/) const { return {}; }
    // True when RunAction only opens a page.
    virtual bool OpensPage() const { return true; }
    // The page that RunAction opens; empty when it opens no page.
    virtual CAtlString GetPage(unsigned /*item*/) const { return {}; }
    // The versions for machines, independent of the user's locale.
    virtual CAtlString GetPlainInstalledVersion(unsigned item) const { return GetInstalledVersion(item); }
    virtual CAtlString GetPlainLatestVersion(unsigned item) const { return GetLatestVersion(item); }

    // Fetches for the checks; the controller sets it before each of them.
    void SetDownloader(const boost::shared_ptr<IDownloader>& downloader) { downloader_ = downloader; }

    // Receives decisions and their reasons, in place of ConsoleObserver(); not owned.
    void SetObserver(IDecisionObserver& observer) { observer_ = &observer; }

protected:
    IDecisionObserver& GetObserver() const { return *observer_; }
    const boost::shared_ptr<IDownloader>& GetDownloader() const { return downloader_; }

private:
    IDecisionObserver* observer_ = &ConsoleObserver();
    boost::shared_ptr<IDownloader> downloader_;
};
