// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A product of the maker, in all the versions that are installed side by side.
#pragma once

#include "platform/desktop/IEnvironment.h"
#include "products/CProductVersion.h"
#include "products/CVersionString.h"
#include "products/IProduct.h"
#include "products/ItemState.h"

#include <QCoreApplication>

// Finds the product's local description files in the shared data folder: the base name, then nothing or a
// digit and whatever follows, then ".xml". Each installed version is an item; the highest is the current one,
// which alone is checked and has an action. Another installed product may disable the updates of this one:
// its row then shows no newer version, and no button.
class CProductVersions : public IProduct {
    Q_DECLARE_TR_FUNCTIONS(CProductVersions)

public:
    // Another product whose presence, in the versions of the range, disables this one.
    struct Disabler {
        CAtlString uid;
        CVersionString from;
        CVersionString to;
    };

    // The name of the product's element in the list file: "Product".
    static const CAtlString ELEMENT_NAME;

    // Whether a file is a local description; its name must begin with the base name and end in ".xml".
    static bool IsDescriptionFile(const CAtlString& baseName, const CVardoFilePath& file);

    explicit CProductVersions(const boost::shared_ptr<IEnvironment>& environment);

    bool Init(const TiXmlElement* element) override;
    bool FindInstalled() override;
    bool CheckForUpdates() override;
    CAtlString GetCheckAddress() const override;
    CAtlString GetKey() const override { return baseName_; }
    QString GetName() const override { return name_; }
    bool IsChecked(unsigned item) const override { return items_[item]->IsRemoteLoaded(); }
    bool IsUpdateAvailable(unsigned item) const override { return items_[item]->IsUpdateAvailable(); }
    // False for an update whose version the user skips.
    bool IsWanted(unsigned item) const override {
        return !IsUpdateAvailable(item) || !IsSkipped(*this, item);
    }
    CAtlString GetOffer(unsigned item) const override { return items_[item]->GetUpdateVersion().GetString(); }
    bool HasAction(unsigned item) const override;
    // Opens the item's page, or else the product's, in the browser.
    bool RunAction(unsigned item) override;
    bool IsHighlighted(unsigned /*item*/) const override { return false; }
    unsigned GetItemCount() const override { return static_cast<unsigned>(items_.size()); }
    CAtlString GetInstalledVersion(unsigned item) const override;
    CAtlString GetLatestVersion(unsigned item) const override;
    void SetRow(unsigned item, int row) override { items_[item]->SetRow(row); }
    int GetRow(unsigned item) const override { return items_[item]->GetRow(); }
    QList<QString> GetActionTexts() const override { return {tr("Current"), tr("Update")}; }
    void ApplyDisablers(const CProductsByKey& all) override;
    bool IsCurrent(unsigned item) const override { return items_[item].get() == current_; }
    bool IsDisabled() const override { return disabled_; }
    CAtlString GetPage(unsigned item) const override {
        return PageOf(items_[item]->GetTable().ChooseOffer());
    }
    QString GetDisablerName() const override { return disablerName_; }
    CAtlString GetDescriptionName() const override { return baseName_; }
    // The page about the current item's update, or else the product's.
    virtual CAtlString GetWebPage() const;
    // The page of an offer, or else the product's.
    CAtlString PageOf(const CUpdateEntry& offer) const;
    const std::vector<Disabler>& GetDisablers() const { return disablers_; }

protected:
    void SetBaseName(const CAtlString& baseName) { baseName_ = baseName; }

private:
    void ReadDisablers(const TiXmlElement& element);
    bool IsKnown(const CVersionString& version) const;
    // Reads a file that begins with the base name into its item.
    Verdict Read(const CVardoFilePath& file, CProductVersion& item) const;
    bool IsDisabledBy(const IProduct& other) const;
    bool IsInRange(const CAtlString& version, const Disabler& disabler) const;

    std::vector<Disabler> disablers_;
    bool disabled_ = false;
    QString disablerName_;
    std::vector<boost::shared_ptr<CProductVersion>> items_;
    // Points to the item of items_ that has the highest version.
    CProductVersion* current_ = nullptr;
    QString name_;
    CAtlString baseName_;
    CAtlString defaultAddress_;
    boost::shared_ptr<IEnvironment> environment_;
};
