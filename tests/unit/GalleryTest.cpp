// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Gallery content: its category lists and its tool. (Why it may not be found is what an observer learns.)
#include <QLocale>

#include "DataTable.h"
#include "ProductTest.h"

namespace {

// Categories for "a 2010-01-05, b": their ids, each with its version if it has one.
std::string Categories(const QString& cell) {
    QString elements;
    for (const QString& each : cell.split(", ")) {
        const QString version = each.contains(' ') ? "' version='" + each.section(' ', 1) : QString();
        elements += "<category id='" + each.section(' ', 0, 0) + version + "'/>";
    }
    return elements.toStdString();
}

CAtlString Shown(const QString& version) {
    const QDate date = QDate::fromString(version, Qt::ISODate);
    return date.isValid() ? QLocale::system().toString(date, QLocale::ShortFormat) : version;
}

class Gallery : public ProductTest {
protected:
    Gallery() { RecordGallery(shared_.Path("ims/manifest.xml"), "", tool_); }

    // Gallery content that was found with these categories, while others are published.
    Product Find(const QString& installed, const QString& published) {
        shared_.Write("ims/Uninstall/updateinfo.xml", "<info>" + Categories(installed) + "</info>");
        downloader_->Serve("http://h/gallery_categories.xml",
                           "<g><categories>" + Categories(published) + "</categories></g>");
        Product product = Make("<Gallery Name='n' GUID='{G}' DefaultUrl='http://h//'/>");
        EXPECT_TRUE(product->FindInstalled());
        return product;
    }

    const std::string tool_ = shared_.Write("tool", "");
};

}  // namespace

TEST_F(Gallery, ComparesItsCategoriesWithThePublishedOnes) {
    for (const QStringList& row : DataTable("galleries.txt")) {
        SCOPED_TRACE(row.join(" | ").toStdString());
        const Product product = Find(row[0], row[1]);
        const bool isChecked = row[2] != "unchecked";
        EXPECT_EQ(Check(product), isChecked);
        EXPECT_EQ(product->IsChecked(0), isChecked);
        EXPECT_EQ(product->HasAction(0), isChecked);
        EXPECT_EQ(product->IsUpdateAvailable(0), row[2] == "update");
        EXPECT_EQ(product->GetInstalledVersion(0), Shown(row[3]));
        EXPECT_EQ(product->GetLatestVersion(0), Shown(row[4]));
    }
}

TEST_F(Gallery, StartsItsToolOnItsContentWhileItCan) {
    const Product product = Find("a 1", "a 2");
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
