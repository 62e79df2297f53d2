// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Gallery content: its category lists and its tool. (Why it may not be found is what an observer learns.)
#include <gtest/gtest.h>
#include <QLocale>
#include <string>
#include <tuple>

#include "ProductTest.h"

namespace {

std::string Category(const std::string& id, const std::string& version) {
    return "<category id='" + id + "' version='" + version + "'/>";
}

CAtlString Shown(int year, int month, int day) {
    return QLocale::system().toString(QDate(year, month, day), QLocale::ShortFormat);
}

class Gallery : public ProductTest {
protected:
    Gallery() { RecordGallery(shared_.Path("ims/manifest.xml"), "", tool_); }

    // Gallery content that was found with these categories, while others are published.
    Product Find(const std::string& installed, const std::string& published) {
        shared_.Write("ims/Uninstall/updateinfo.xml", "<info>" + installed + "</info>");
        downloader_->Serve("http://h/gallery_categories.xml",
                           "<g><categories>" + published + "</categories></g>");
        Product product = Make("<Gallery Name='n' GUID='{G}' DefaultUrl='http://h//'/>");
        EXPECT_TRUE(product->FindInstalled());
        return product;
    }

    const std::string tool_ = shared_.Write("tool", "");
};

}  // namespace

TEST_F(Gallery, ComparesItsCategoriesWithThePublishedOnes) {
    const auto a = [](const char* version) { return Category("a", version); };
    const std::string b = Category("b", "2010-03-01");
    const CAtlString january = Shown(2010, 1, 5);
    const CAtlString march = Shown(2010, 3, 1);
    const std::tuple<const char*, std::string, std::string, bool, bool, CAtlString, CAtlString> cases[] = {
        {"one is newer", a("2010-01-05") + b, a("2010-02-01") + b, true, true, march, march},
        {"all are current", a("2010-01-05"), a("2010-01-05"), true, false, january, january},
        {"older ones", a("2010-01-05"), a("2009-01-05"), true, false, january, Shown(2009, 1, 5)},
        {"only unknown ones", a("2010-01-05"), b, false, false, january, ""},
        {"texts that are no dates", a("3.1"), a("3.2"), true, true, "3.1", "3.2"},
        {"impossible dates", a("2010-13-40"), a("b"), true, true, "2010-13-40", "b"},
        {"an id named twice", a("1") + a("2"), a("3") + a("2"), true, false, "2", "2"},
        {"no version", a("1"), "<category id='a'/>", true, false, "1", ""},
    };
    for (const auto& [situation, installed, published, checked, available, shown, latest] : cases) {
        SCOPED_TRACE(situation);
        const Product product = Find(installed, published);
        EXPECT_EQ(Check(product), checked);
        EXPECT_EQ(product->IsChecked(0), checked);
        EXPECT_EQ(product->HasAction(0), checked);
        EXPECT_EQ(product->IsUpdateAvailable(0), available);
        EXPECT_EQ(product->GetInstalledVersion(0), shown);
        EXPECT_EQ(product->GetLatestVersion(0), latest);
    }
}

TEST_F(Gallery, StartsItsToolOnItsContentWhileItCan) {
    const Product product = Find(Category("a", "1"), Category("a", "2"));
    EXPECT_FALSE(product->CheckForUpdates() || product->HasAction(0)) << "no downloader";
    EXPECT_FALSE(Check(Make("<Gallery Name='n' GUID='{G}' DefaultUrl='http://h'/>"))) << "not looked for";
    EXPECT_TRUE(downloader_->addresses.empty()) << "what is not installed is not fetched";
    EXPECT_TRUE(Check(product) && product->HasAction(0));
    for (const bool starts : {true, false}) {
        environment_->programsStart = starts;
        EXPECT_EQ(product->RunAction(0), starts);
        EXPECT_EQ(environment_->startedPrograms.back(),
                  std::pair(QString(tool_.c_str()), QStringList({"-guid", "{G}"})));
    }
    std::filesystem::rename(tool_, tool_ + "2");
    EXPECT_FALSE(product->HasAction(0)) << "no tool";
    std::filesystem::rename(tool_ + "2", tool_);
    downloader_->Forget(downloader_->addresses.back());
    EXPECT_FALSE(Check(product) || product->HasAction(0)) << "no longer checked";
}
