// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Gallery content of the notebook software.
#pragma once

#include "platform/desktop/IEnvironment.h"
#include "platform/files/CVardoFilePath.h"
#include "products/IProduct.h"
#include "products/ItemState.h"

#include <QCoreApplication>
#include <QDate>
#include <map>

// Content is versioned by category: an installed list of categories lies below the folder of the content's
// manifest, the published one at the product's address. Versions are texts that sort, mostly dates as
// "yyyy-MM-dd", which are shown in the system's format. It is one item once a category is known; item indices
// are ignored.
class GalleryVersion : public IProduct {
    Q_DECLARE_TR_FUNCTIONS(GalleryVersion)

public:
    // The name of its element in the list file: "Gallery".
    static const CAtlString ELEMENT_NAME;

    explicit GalleryVersion(const boost::shared_ptr<IEnvironment>& environment);

    bool Init(const TiXmlElement* element) override;
    bool FindInstalled() override;
    bool CheckForUpdates() override;
    CAtlString GetCheckAddress() const override;
    CAtlString GetKey() const override { return GetWebPage(); }
    QString GetName() const override { return name_.ToQString(); }
    bool IsChecked(unsigned /*item*/) const override { return checked_; }
    bool IsUpdateAvailable(unsigned item) const override;
    // False for an update whose versions the user skips.
    bool IsWanted(unsigned item) const override {
        return !IsUpdateAvailable(item) || !IsSkipped(*this, item);
    }
    // The published versions of the categories, in the order of their identifiers.
    CAtlString GetOffer(unsigned item) const override;
    bool OpensPage() const override { return false; }
    // True after a check, while the tool that maintains the content exists.
    bool HasAction(unsigned item) const override;
    // Starts the tool on the content.
    bool RunAction(unsigned item) override;
    bool IsHighlighted(unsigned /*item*/) const override { return false; }
    unsigned GetItemCount() const override { return categories_.empty() ? 0 : 1; }
    CAtlString GetInstalledVersion(unsigned item) const override;
    CAtlString GetLatestVersion(unsigned item) const override;
    // The versions as written in the files.
    CAtlString GetPlainInstalledVersion(unsigned /*item*/) const override {
        return Newest(&Versions::installed);
    }
    CAtlString GetPlainLatestVersion(unsigned /*item*/) const override { return Newest(&Versions::latest); }
    void SetRow(unsigned /*item*/, int row) override { row_ = row; }
    int GetRow(unsigned /*item*/) const override { return row_; }
    QList<QString> GetActionTexts() const override { return {tr("Current"), tr("Update")}; }
    // The name of the installed category list, without its extension: "updateinfo".
    CAtlString GetDescriptionName() const override;
    // The content's GUID, which stands where other products have a page.
    virtual CAtlString GetWebPage() const { return guid_; }

    // Where the list of published categories lies.
    CAtlString GetPublishedAddress() const;
    // Reads a list of installed categories in place of what is known; true when it names one.
    bool ReadInstalledCategories(const CVardoFilePath& file);
    // Reads the bytes of a list of published categories; true when it names an installed one.
    bool ReadPublishedCategories(const CAtlStringA& bytes);
    // Reads a version text as a date; invalid when the text is not a date.
    static QDate ReadDate(const CAtlString& version);

private:
    struct Versions {
        CAtlString installed;
        CAtlString latest;
    };

    // Finds the content and reads its category list, whose path replaces file once it is known.
    bool ReadInstalled(CVardoFilePath& file);
    // Tells the observer what came of a check.
    void TellCheck() const;
    CAtlString Newest(CAtlString Versions::*which) const;

    Verdict verdict_ = Verdict::NOT_READ;
    bool checked_ = false;
    CAtlString name_;
    CAtlString guid_;
    CAtlString defaultAddress_;
    int row_ = 0;
    // By category identifier.
    std::map<CAtlString, Versions> categories_;
    CVardoFilePath toolPath_;
    CAtlString toolArguments_;
    boost::shared_ptr<IEnvironment> environment_;
};
