// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Notifications: which messages show, in which language, and how they are dismissed. And the board software
// that they are for. (Their dates are those of docs/formats.md; why one does not show, an observer learns.)
#include "DataTable.h"
#include "ProductTest.h"
#include "app/settings/DefaultSettings.h"
#include "i18n/Language.h"

namespace {

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
    // A notification that was found and checked against a message.
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

}  // namespace

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
