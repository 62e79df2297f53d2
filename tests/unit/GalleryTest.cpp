// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Gallery content: its record, its category lists and its tool.
#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QLocale>
#include <QSettings>
#include <string>

#include "ProductTest.h"
#include "platform/CSettingsIdentity.h"
#include "platform/SettingsStore.h"

namespace {

constexpr const char* PUBLISHED = "http://h/gallery/gallery_categories.xml";

std::string Category(const std::string& id, const std::string& version) {
    return "<category id='" + id + "' version='" + version + "'/>";
}

class Gallery : public ProductTest {
protected:
    Gallery() {
        Record("ImsManifestXml", content_.Path("ims/manifest.xml"));
        Record("MetadataXml", "");
        Record("AppPath", tool_);
    }

    static void Record(const char* name, const std::string& value) {
        const CSettingsIdentity notebook("VARDO Technologies", "", "VARDO Notebook");
        WriteRegistryString(HKEY_LOCAL_MACHINE, "Software\\VARDO Technologies\\Gallery\\TeamContent\\{G}",
                            name, value.c_str());
    }
    void InstallCategories(const std::string& categories) {
        content_.Write("ims/Uninstall/updateinfo.xml", "<info>" + categories + "</info>");
    }
    void Publish(const std::string& categories) {
        downloader_->Serve(PUBLISHED, "<g><categories>" + categories + "</categories></g>");
    }
    Product MakeG(const std::string& address = "http://h/gallery") {
        return Make("<Gallery Name='Pictures' GUID='{G}' DefaultUrl='" + address + "'/>");
    }
    static QString Shown(int year, int month, int day) {
        return QLocale::system().toString(QDate(year, month, day), QLocale::ShortFormat);
    }

    TemporaryTree content_;
    std::string tool_ = content_.Write("tool", "");
};

}  // namespace

TEST_F(Gallery, NeedsAllItsAttributes) {
    for (const char* element :
         {"<Gallery GUID='g' DefaultUrl='u'/>", "<Gallery Name='n' DefaultUrl='u'/>",
          "<Gallery Name='n' GUID='g'/>", "<gallery Name='n' GUID='g' DefaultUrl='u'/>"})
        EXPECT_FALSE(Make(element)) << element;
    const Product product = MakeG();
    EXPECT_EQ(product->GetKey(), CAtlString("{G}"));
    EXPECT_EQ(product->GetName(), QString("Pictures"));
    EXPECT_EQ(product->GetDescriptionName(), CAtlString("updateinfo"));
    EXPECT_EQ(product->GetItemCount(), 0U);
}

TEST_F(Gallery, IsFoundThroughTheNotebooksRecord) {
    const std::string manifest = content_.Path("ims/manifest.xml");
    const struct {
        const char* situation;
        std::string manifest;
        const char* metadata;
        std::string tool;
        const char* categories;
        bool found;
    } cases[] = {
        {"complete", manifest, "", tool_, "<category id='a' version='1'/>", true},
        {"no tool", manifest, "m", "", "<category id='a' version='1'/>", false},
        {"no manifest", "", "m", tool_, "<category id='a' version='1'/>", false},
        {"neither manifest nor metadata", "", "", tool_, "<category id='a' version='1'/>", false},
        {"no categories", manifest, "", tool_, "", false},
        {"categories without id", manifest, "", tool_, "<category version='1'/><category id='' version='1'/>",
         false},
        {"no list", "/nowhere/manifest.xml", "", tool_, "<category id='a' version='1'/>", false},
    };
    QCoreApplication::setOrganizationName("some organisation");
    QCoreApplication::setOrganizationDomain("some.domain");
    QCoreApplication::setApplicationName("some name");
    for (const auto& c : cases) {
        Record("ImsManifestXml", c.manifest);
        Record("MetadataXml", c.metadata);
        Record("AppPath", c.tool);
        InstallCategories(c.categories);
        const Product product = MakeG();
        EXPECT_EQ(product->FindInstalled(), c.found) << c.situation;
        EXPECT_EQ(product->GetItemCount(), c.found ? 1U : 0U) << c.situation;
    }
    EXPECT_EQ(QCoreApplication::organizationName(), QString("some organisation"));
    EXPECT_EQ(QCoreApplication::organizationDomain(), QString("some.domain"));
    EXPECT_EQ(QCoreApplication::applicationName(), QString("some name"));
    for (const auto& clear :
         {&QCoreApplication::setOrganizationName, &QCoreApplication::setOrganizationDomain,
          &QCoreApplication::setApplicationName})
        clear(QString());
}

TEST_F(Gallery, ComparesItsCategoriesWithThePublishedOnes) {
    const struct {
        const char* situation;
        std::string installed;
        std::string published;
        bool checked;
        bool available;
        CAtlString installedText;
        CAtlString latestText;
    } cases[] = {
        {"one category is newer", Category("a", "2010-01-05") + Category("b", "2010-03-01"),
         Category("a", "2010-02-01") + Category("b", "2010-03-01"), true, true, Shown(2010, 3, 1),
         Shown(2010, 3, 1)},
        {"all are current", Category("a", "2010-01-05"), Category("a", "2010-01-05"), true, false,
         Shown(2010, 1, 5), Shown(2010, 1, 5)},
        {"published ones are older", Category("a", "2010-01-05"), Category("a", "2009-01-05"), true, false,
         Shown(2010, 1, 5), Shown(2009, 1, 5)},
        {"only unknown ones", Category("a", "2010-01-05"), Category("z", "2010-02-01"), false, false,
         Shown(2010, 1, 5), ""},
        {"texts that are no dates", Category("a", "3.1"), Category("a", "3.2"), true, true, "3.1", "3.2"},
        {"impossible dates", Category("a", "2010-13-40"), Category("a", "b"), true, true, "2010-13-40", "b"},
        {"an id named twice", Category("a", "1") + Category("a", "2"),
         Category("a", "3") + Category("a", "2"), true, false, "2", "2"},
        {"a published one without version", Category("a", "1"), "<category id='a'/>", true, false, "1", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.situation);
        InstallCategories(c.installed);
        Publish(c.published);
        const Product product = MakeG();
        ASSERT_TRUE(product->FindInstalled());
        EXPECT_FALSE(product->HasAction(0));
        EXPECT_EQ(Check(product), c.checked);
        EXPECT_EQ(product->IsChecked(0), c.checked);
        EXPECT_EQ(product->HasAction(0), c.checked);
        EXPECT_EQ(product->IsUpdateAvailable(0), c.available);
        EXPECT_EQ(product->GetInstalledVersion(0), c.installedText);
        EXPECT_EQ(product->GetLatestVersion(0), c.latestText);
        EXPECT_FALSE(std::filesystem::exists(downloader_->files.back()));
    }
}

TEST_F(Gallery, IsFetchedFromItsFolderWithOneSlash) {
    for (const char* folder : {"http://h/gallery", "http://h/gallery//", "http://h/gallery\\/"}) {
        InstallCategories(Category("a", "1"));
        Publish(Category("a", "2"));
        const Product product = MakeG(folder);
        product->FindInstalled();
        EXPECT_TRUE(Check(product));
        EXPECT_EQ(downloader_->addresses.back(), PUBLISHED) << folder;
        downloader_->Serve(PUBLISHED, "<g><other/></g>");
        EXPECT_FALSE(Check(product));
        EXPECT_FALSE(product->IsChecked(0));
        downloader_->Forget(PUBLISHED);
        EXPECT_FALSE(Check(product));
        product->SetDownloader(nullptr);
        EXPECT_FALSE(product->CheckForUpdates());
    }
}

TEST_F(Gallery, StartsItsToolOnItsContent) {
    InstallCategories(Category("a", "1"));
    Publish(Category("a", "2"));
    const Product product = MakeG();
    product->FindInstalled();
    Check(product);
    for (const bool starts : {true, false}) {
        environment_->programsStart = starts;
        EXPECT_EQ(product->RunAction(0), starts);
    }
    ASSERT_EQ(environment_->startedPrograms.size(), 2U);
    EXPECT_EQ(environment_->startedPrograms[0].first.toStdString(), tool_);
    EXPECT_EQ(environment_->startedPrograms[0].second, (QStringList{"-guid", "{G}"}));
    std::filesystem::remove(tool_);
    EXPECT_FALSE(product->HasAction(0));
}
