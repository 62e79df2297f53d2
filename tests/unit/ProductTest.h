// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The tests of all kinds of products share this fixture.
#pragma once

#include "platform/settings/CSettingsIdentity.h"
#include "platform/settings/SettingsStore.h"
#include "products/CProductListController.h"
#include "products/Products.h"
#include "support/FakeDownloader.h"
#include "support/FakeEnvironment.h"
#include "support/TemporaryTree.h"
#include "support/TextPrinting.h"

#include <gtest/gtest.h>
#include <tinyxml.h>
#include <boost/make_shared.hpp>
#include <string>
#include <vector>

// A shared data folder of its own, a fake environment that has it, and a fake downloader.
class ProductTest : public testing::Test {
protected:
    using Product = boost::shared_ptr<IProduct>;

    ProductTest() { environment_->sharedDataFolder = CVardoDirectoryPath(shared_.Root().c_str()); }

    // Writes a local description into the shared data folder.
    void Install(const std::string& file, const std::string& version, const std::string& remote = "r.xml") {
        shared_.Write(file, "<l><Product CurrentVersion='" + version + "' RemoteVersionFile='" + remote +
                                "' RemoteVersionFileURL='http://h/'/></l>");
    }
    // Records gallery content with the GUID {G} in the notebook's settings.
    static void RecordGallery(const std::string& manifest, const std::string& metadata,
                              const std::string& tool) {
        const CSettingsIdentity notebook("VARDO Technologies", "", "VARDO Notebook");
        const CAtlString key("Software\\VARDO Technologies\\Gallery\\TeamContent\\{G}");
        WriteRegistryString(HKEY_LOCAL_MACHINE, key, "ImsManifestXml", manifest.c_str());
        WriteRegistryString(HKEY_LOCAL_MACHINE, key, "MetadataXml", metadata.c_str());
        WriteRegistryString(HKEY_LOCAL_MACHINE, key, "AppPath", tool.c_str());
    }
    // Makes the product of an element of the product list; null when the element is faulty.
    Product Make(const std::string& element) {
        TiXmlDocument document;
        document.Parse(element.c_str());
        return CreateProduct(document.RootElement(), environment_);
    }
    bool Check(const Product& product) {
        product->SetDownloader(downloader_);
        const bool isChecked = product->CheckForUpdates();
        for (const std::string& file : downloader_->files)
            EXPECT_FALSE(std::filesystem::exists(file)) << "what was fetched must not stay";
        return isChecked;
    }
    // The window's rows for the list's products: name, versions, caption of the button, and the page that it
    // opens. Presses every button.
    std::vector<std::string> RowsOf(const CProductListController& list) {
        std::vector<std::string> rows;
        for (const auto& product : list.GetProducts())
            for (unsigned item = 0; item < product->GetItemCount(); ++item)
                rows.push_back(Row(*product, item));
        return rows;
    }

    TemporaryTree shared_;
    boost::shared_ptr<FakeEnvironment> environment_ = boost::make_shared<FakeEnvironment>();
    boost::shared_ptr<FakeDownloader> downloader_ = boost::make_shared<FakeDownloader>();

private:
    std::string Row(IProduct& product, unsigned item) {
        environment_->openedPages.clear();
        QString action = "-";
        if (product.HasAction(item)) {
            action = product.GetActionTexts()[product.IsUpdateAvailable(item)];
            product.RunAction(item);
        }
        const CAtlString page = environment_->openedPages.empty() ? "" : environment_->openedPages.back();
        return QStringList{product.GetName(), product.GetInstalledVersion(item).ToQString(),
                           product.GetLatestVersion(item).ToQString(), action, page.ToQString()}
            .join('|')
            .toStdString();
    }
};
