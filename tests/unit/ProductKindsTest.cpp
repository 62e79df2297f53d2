// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Installed products, notifications and gallery content: what their rows show and what their buttons do.
// ExplanationTest holds why rows are missing, FormatsDocumentTest the days of notifications.
#include <QLocale>
#include <tuple>

#include <gmock/gmock.h>

#include "DataTable.h"
#include "ProductTest.h"
#include "app/settings/DefaultSettings.h"
#include "i18n/Language.h"
#include "products/CProductsByKey.h"

namespace {

class InstalledProducts : public ProductTest {
protected:
    InstalledProducts() {
        downloader_->Serve("http://h/r.xml", "<u Location='Server'><Product UpdateVersion='3.0.0.0'/></u>");
    }

    Product MakeB(const std::string& disablers = "") {
        return Make("<Product Name='Bee' BaseXml='B'><DisableUpdatesIfInstalled>" + disablers +
                    "</DisableUpdatesIfInstalled></Product>");
    }
};

std::string Disabler(const std::string& uid, const std::string& from, const std::string& to) {
    return "<Disabler uid='" + uid + "' versionFrom='" + from + "' versionTo='" + to + "'/>";
}

class Notifications : public ProductTest {
public:
    ~Notifications() override { SetLocaleOverride(QString()); }

protected:
    Notifications() {
        Install("SoftwareUpdateVBS.xml", "9.5.0.0");
        shared_.Write("N.xml", "<Notification URL='http://h/notices/' File='n.xml'/>");
    }

    Product MakeN(const std::string& name = "Courses") {
        return Make("<Notification Name='" + name + "' BaseXML='N'/>");
    }
    // Finds a notification and checks it; its message has these texts.
    Product Checked(const std::string& texts = "<en value='x'/>") {
        downloader_->Serve("http://h/notices/n.xml",
                           "<Notification WebPage='http://page' StartDate='20100101' StopDate='20991231'>"
                           "<Text>" +
                               texts + "</Text></Notification>");
        Product product = MakeN();
        EXPECT_TRUE(product->FindInstalled());
        EXPECT_FALSE(product->CheckForUpdates()) << "no downloader";
        EXPECT_TRUE(Check(product) && product->IsChecked(0));
        EXPECT_EQ(product->GetItemCount(), 1U);
        return product;
    }
};

// For "a 2010-01-05, b", an element for each id, with its version if it has one.
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

    // Finds gallery content with the installed categories, while the site has the published ones.
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

TEST_F(InstalledProducts, FilesThatBelongToABaseName) {
    for (const char* file : {"B.xml", "B2.xml", "B10.xml", "B2 beta.xml", "B2.5.xml"}) {
        Install(file, "1.0.0.0");
        EXPECT_TRUE(MakeB()->FindInstalled()) << file;
        std::filesystem::remove(shared_.Path(file));
    }
    // All at once, because the removal of neighbours from the listing must not skip any.
    for (const char* file : {"BA.xml", "BB.xml", "BC.xml", "BD.xml", "b.xml", "B-2.xml", "B2.xml.bak",
                             "AB.xml", ".B.xml", "B.XML", "B.2.xml", "sub/B.xml"})
        Install(file, "1.0.0.0");
    EXPECT_FALSE(MakeB()->FindInstalled());
}

TEST_F(InstalledProducts, EachVersionIsOneItemAndTheHighestIsChecked) {
    Install("B.xml", "2.0.0.0");
    Install("B1.xml", "1.0.0.0");
    Install("B2.xml", "02.0.0.0");
    Install("B3.xml", "");
    shared_.MakeDirectory("B4.xml");
    const Product product = MakeB();
    EXPECT_TRUE(product->FindInstalled());
    ASSERT_EQ(product->GetItemCount(), 2U);
    EXPECT_NE(product->GetInstalledVersion(0), product->GetInstalledVersion(1));
    EXPECT_FALSE(product->CheckForUpdates()) << "no downloader";
    EXPECT_TRUE(Check(product));
    EXPECT_EQ(downloader_->addresses, std::vector<std::string>{"http://h/r.xml"});
    for (const unsigned item : {0U, 1U})
        EXPECT_EQ(product->IsChecked(item), product->GetInstalledVersion(item) == CAtlString("2.0.0.0"));
    environment_->pagesOpen = false;
    EXPECT_FALSE(product->RunAction(0)) << "no browser";
    EXPECT_FALSE(Check(MakeB())) << "not looked for";
}

TEST_F(InstalledProducts, AreDisabledByOthersInTheGivenVersions) {
    const std::string other = Disabler("X", "", "9.0.0.0");
    const std::tuple<const char*, std::string, bool, const char*> cases[] = {
        {"in one version", Disabler("K", "1.0.0.0", "1.5.0.0"), true, "(K K\n)+"},
        {"in the other", Disabler("K", "2.5.0.0", "2.5.0.0"), true, "(K K\n)+"},
        {"out of range", Disabler("K", "1.6.0.0", "1.9.9.9"), false, "K K\nK K\nB2 K\n"},
        {"another case", Disabler("k", "1.0.0.0", "1.9.9.9"), false, "K k\nK k\nB2 k\n"},
        {"a range without ends", "<Disabler uid='K'/>", false, "K K\nK K\nB2 K\n"},
        {"the second of each", other + Disabler("B2", "", "9.0.0.0"), true,
         "K X\nK B2\nK X\nK B2\nB2 X\nB2 B2\n"},
        {"itself, and one of its own key", Disabler("B", "", "9.0.0.0"), false, "K B\nK B\nB2 B\n"},
    };
    Install("B.xml", "1.0.0.0");
    Install("K.xml", "1.5.0.0");
    Install("K2.xml", "2.5.0.0");
    Install("B2.xml", "1.0.0.0");
    for (const auto& [situation, disablers, disabled, lines] : cases) {
        SCOPED_TRACE(situation);
        const Product product = MakeB(disablers);
        const IProduct::List all = {product, MakeB(), Make("<Product Name='Kay' BaseXml='K'/>"),
                                    Make("<Product Name='absent' BaseXml='Z'/>"),
                                    Make("<Product Name='Bee 2' BaseXml='B2'/>")};
        for (const Product& each : all)
            each->FindInstalled();
        testing::internal::CaptureStdout();
        product->ApplyDisablers(all);
        EXPECT_THAT(testing::internal::GetCapturedStdout(), testing::MatchesRegex(lines));
        EXPECT_TRUE(Check(product) && product->IsUpdateAvailable(0));
        EXPECT_EQ(product->HasAction(0), !disabled);
        EXPECT_EQ(product->GetLatestVersion(0), CAtlString(disabled ? "1.0.0.0" : "3.0.0.0"));
    }
}

TEST_F(Notifications, ShowBesideOlderBoardSoftwareAlone) {
    EXPECT_FALSE(Make("<Notification Name='Courses' BaseXML='./N'/>")->FindInstalled()) << "a path";
    const Product product = Checked();
    for (const auto& [version, shown] : {std::pair("9.99.99.99", true), std::pair("10.0.0.0", false),
                                         std::pair("nine", true), std::pair("", false)}) {
        Install("SoftwareUpdateVBS.xml", version);
        EXPECT_EQ(product->IsUpdateAvailable(0), shown) << version;
    }
    std::filesystem::remove(shared_.Path("SoftwareUpdateVBS.xml"));
    EXPECT_FALSE(product->IsUpdateAvailable(0));
    Install("SoftwareUpdateVBS2.xml", "9.0.0.0");
    EXPECT_TRUE(product->IsUpdateAvailable(0));
}

TEST_F(Notifications, SpeakTheUsersLanguage) {
    const TemporaryTree setup;
    setup.Write("Languages/languages.xml", "<l><x ID='0407' Code='de'/><x ID='0C07' Code='de_AT'/></l>");
    const CAtlString key("Software\\VARDO Technologies\\Language Setup");
    WriteRegistryString(HKEY_LOCAL_MACHINE, key, "Path", setup.Root().c_str());
    for (const QStringList& row : DataTable("notification-languages.txt")) {
        QString texts;
        for (const QString& text : row[1].split(", "))
            texts += '<' + text.section(' ', 0, 0) + " value='" + text.section(' ', 1) + "'/>";
        SetLocaleOverride(row[0]);
        EXPECT_EQ(Checked(texts.toStdString())->GetName(), row[2]) << row.join(" | ").toStdString();
    }
    WriteRegistryString(HKEY_LOCAL_MACHINE, key, "Path", "");
}

TEST_F(Notifications, AreDismissedForGoodByTheirButton) {
    shared_.Write("products.xml", "<p Version='1'><Notification Name='Courses' BaseXML='N'/></p>");
    const Product product = Checked();
    CProductListController list(environment_);
    list.SetDownloader(downloader_);
    EXPECT_TRUE(list.LoadProductList() && list.FindInstalled() && list.CheckForUpdates());
    EXPECT_TRUE(list.IsAnyUpdateAvailable());
    environment_->pagesOpen = false;
    EXPECT_FALSE(product->RunAction(0));
    EXPECT_EQ(environment_->openedPages, std::vector<CAtlString>{"http://page"});
    EXPECT_FALSE(product->IsWanted(0) || MakeN()->IsWanted(0));
    EXPECT_TRUE(product->IsUpdateAvailable(0)) << "it stays in the window";
    EXPECT_FALSE(list.IsAnyUpdateAvailable()) << "it opens none";
    EXPECT_TRUE(MakeN("Other")->IsWanted(0));
    WriteRegistryDword(HKEY_CURRENT_USER, DefaultSettings::NOTIFICATION_KEY, "Courses", 2);
    EXPECT_TRUE(product->IsWanted(0));

    EXPECT_FALSE(MakeN("Unchecked")->RunAction(0));
    EXPECT_FALSE(MakeN("Unchecked")->IsWanted(0));
    EXPECT_EQ(environment_->openedPages.size(), 1U);
}

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

TEST_F(Gallery, IsFoundByAKeyThatAProductHasToo) {
    Install("{G}.xml", "1.0.0.0");
    const IProduct::List all = {Find("a 1", "a 2"), Make("<Product Name='p' BaseXml='{G}'/>"),
                                Make("<Product Name='q' BaseXml='{G}'/>")};
    for (const Product& each : all)
        each->FindInstalled();
    EXPECT_EQ(CProductsByKey(all).WithKeys({"{G}"}), IProduct::List({all[0], all[1]}));
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
