// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Notifications: when they show, in which language, and how they are dismissed. And the board software that
// they are for.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "ProductTest.h"
#include "app/settings/DefaultSettings.h"
#include "i18n/Language.h"
#include "platform/SettingsStore.h"
#include "products/IsBoardInstalled.h"

namespace {

constexpr const char* ADDRESS = "http://h/notices/n.xml";

std::string Message(const std::string& texts, const std::string& start = "20100101",
                    const std::string& stop = "20100110", const std::string& page = "http://page") {
    return "<Notification WebPage='" + page + "' StartDate='" + start + "' StopDate='" + stop + "'><Text>" +
           texts + "</Text></Notification>";
}

class Notifications : public ProductTest {
protected:
    Notifications() {
        Install("SoftwareUpdateVBS.xml", "9.5.0.0");
        shared_.Write("N.xml", "<Notification URL='http://h/notices/' File='n.xml'/>");
        environment_->today = QDate(2010, 1, 5);
    }
    ~Notifications() override { SetLocaleOverride(QString()); }

    Product MakeN(const std::string& name = "Courses") {
        return Make("<Notification Name='" + name + "' BaseXML='N'/>");
    }
    // A notification that was found and checked against a message.
    Product Checked(const std::string& message) {
        downloader_->Serve(ADDRESS, message);
        Product product = MakeN();
        EXPECT_TRUE(product->FindInstalled());
        Check(product);
        EXPECT_FALSE(std::filesystem::exists(downloader_->files.back()));
        return product;
    }
};

}  // namespace

TEST_F(Notifications, NeedAKeyAndALocalDescription) {
    EXPECT_FALSE(Make("<Notification Name='n'/>"));
    EXPECT_EQ(Make("<Notification BaseXML='N'/>")->GetKey(), CAtlString("N"));
    const struct {
        const char* situation;
        const char* description;
        bool found;
    } cases[] = {
        {"complete", "<Notification URL='http://h' File='n.xml'/>", true},
        {"another root", "<notification URL='http://h' File='n.xml'/>", false},
        {"no folder", "<Notification File='n.xml'/>", false},
        {"no file", "<Notification URL='http://h'/>", false},
    };
    for (const auto& c : cases) {
        shared_.Write("N.xml", c.description);
        EXPECT_EQ(MakeN()->FindInstalled(), c.found) << c.situation;
    }
    std::filesystem::remove(shared_.Path("N.xml"));
    EXPECT_FALSE(MakeN()->FindInstalled());
}

TEST_F(Notifications, AreFetchedFromTheirFolderWithOneSlash) {
    for (const char* folder :
         {"http://h/notices", "http://h/notices/", "http://h/notices//", "http://h/notices\\/"}) {
        shared_.Write("N.xml", std::string("<Notification URL='") + folder + "' File='n.xml'/>");
        Checked(Message("<en value='x'/>"));
        EXPECT_EQ(downloader_->addresses.back(), ADDRESS) << folder;
    }
    EXPECT_FALSE(MakeN()->CheckForUpdates());
}

TEST_F(Notifications, MessagesThatAreAccepted) {
    const std::string text = "<en value='x'/>";
    const struct {
        const char* situation;
        std::string message;
        bool accepted;
    } cases[] = {
        {"complete", Message(text), true},
        {"no page", Message(text, "20100101", "20100110", ""), false},
        {"no text", Message(""), false},
        {"a start that is no date", Message(text, "20101340"), false},
        {"a stop in another form", Message(text, "20100101", "2010-01-10"), false},
        {"texts in a second list alone",
         "<Notification WebPage='p' StartDate='20100101' StopDate='20100110'>"
         "<Text/><Text>" +
             text + "</Text></Notification>",
         false},
        {"another root",
         "<Message WebPage='p' StartDate='20100101' StopDate='20100110'><Text>" + text + "</Text></Message>",
         false},
    };
    for (const auto& c : cases) {
        const Product product = Checked(c.message);
        EXPECT_EQ(product->IsChecked(0), c.accepted) << c.situation;
        EXPECT_EQ(product->GetItemCount(), c.accepted ? 1U : 0U) << c.situation;
    }
    downloader_->Forget(ADDRESS);
    EXPECT_FALSE(Check(MakeN()));
}

TEST_F(Notifications, ShowBetweenTheirDates) {
    const struct {
        QDate today;
        bool shown;
    } cases[] = {
        {QDate(2009, 12, 31), false}, {QDate(2010, 1, 1), false},  {QDate(2010, 1, 2), true},
        {QDate(2010, 1, 9), true},    {QDate(2010, 1, 10), false}, {QDate(2011, 1, 5), false},
    };
    const Product product = Checked(Message("<en value='x'/>"));
    for (const auto& c : cases) {
        environment_->today = c.today;
        EXPECT_EQ(product->GetItemCount(), c.shown ? 1U : 0U) << c.today.toString(Qt::ISODate).toStdString();
        EXPECT_EQ(product->IsUpdateAvailable(0), c.shown);
        EXPECT_EQ(product->HasAction(0), c.shown);
    }
    EXPECT_TRUE(product->IsHighlighted(0));
    EXPECT_EQ(product->GetInstalledVersion(0), CAtlString(" "));
    EXPECT_EQ(product->GetLatestVersion(0), CAtlString(" "));
    EXPECT_EQ(product->GetActionTexts(), (QList<QString>{"Current", "More..."}));
    EXPECT_LT(product->GetRow(0), 0);
}

TEST_F(Notifications, ShowBesideOlderBoardSoftwareAlone) {
    const struct {
        const char* version;
        bool shown;
    } cases[] = {{"9.5.0.0", true},   {"9.99.99.99", true}, {"10.0.0.0", false},
                 {"10.1.0.0", false}, {"nine", true},       {"", false}};
    const Product product = Checked(Message("<en value='x'/>"));
    for (const auto& c : cases) {
        Install("SoftwareUpdateVBS.xml", c.version);
        EXPECT_EQ(IsBoardInstalled(environment_), c.shown) << c.version;
        EXPECT_EQ(product->IsUpdateAvailable(0), c.shown) << c.version;
    }
    std::filesystem::remove(shared_.Path("SoftwareUpdateVBS.xml"));
    EXPECT_FALSE(IsBoardInstalled(environment_));
    Install("SoftwareUpdateVBS2.xml", "9.0.0.0");
    EXPECT_TRUE(IsBoardInstalled(environment_));
}

TEST_F(Notifications, SpeakTheUsersLanguage) {
    const TemporaryTree setup;
    setup.Write("Languages/languages.xml", "<l><x ID='0407' Code='de'/><x ID='0C07' Code='de_AT'/></l>");
    WriteRegistryString(HKEY_LOCAL_MACHINE, "Software\\VARDO Technologies\\Language Setup", "Path",
                        setup.Root().c_str());
    const std::string en = "<en value='hello'/>";
    const std::string de = "<de value='früher'/><de value='grüß'/>";
    const std::string austrian = "<de_AT value='servus'/>";
    const struct {
        const char* situation;
        const char* language;
        std::string texts;
        const char* shown;
    } cases[] = {
        {"its own text; the last one of a code", "de", en + de, "grüß"},
        {"English for want of its own", "fr", en + de, "hello"},
        {"none at all", "fr", de, ""},
        {"known by its ID", "0407", en + de, "grüß"},
        {"an unknown ID", "040C", en + de, "hello"},
        {"with its region", "de_AT", en + de + austrian, "servus"},
        {"without its region", "de_AT", en + de, "grüß"},
        {"without its region, written with a dash", "de-CH", en + de, "grüß"},
        {"an ID with its region", "0C07", en + de + austrian, "servus"},
        {"an ID without its region", "0C07", en + de, "grüß"},
        {"English for want of both", "de_AT", en, "hello"},
        {"no other region's", "de", en + austrian, "hello"},
    };
    for (const auto& c : cases) {
        SetLocaleOverride(c.language);
        EXPECT_EQ(Checked(Message(c.texts))->GetName(), QString(c.shown)) << c.situation;
    }
    WriteRegistryString(HKEY_LOCAL_MACHINE, "Software\\VARDO Technologies\\Language Setup", "Path", "");
}

TEST_F(Notifications, AreDismissedForGoodByTheirButton) {
    const auto stored = [](const char* name) {
        int error = REGISTRY_OK;
        return ReadRegistryDword(HKEY_CURRENT_USER, DefaultSettings::NOTIFICATION_KEY, name, 7, error);
    };
    const Product product = Checked(Message("<en value='x'/>"));
    EXPECT_TRUE(product->IsWanted(0));
    environment_->pagesOpen = false;
    EXPECT_FALSE(product->RunAction(0));
    EXPECT_EQ(environment_->openedPages, std::vector<CAtlString>{"http://page"});
    EXPECT_EQ(stored("Courses"), 1);
    EXPECT_FALSE(product->IsWanted(0));
    EXPECT_FALSE(MakeN()->IsWanted(0));
    EXPECT_TRUE(product->IsUpdateAvailable(0));
    EXPECT_TRUE(MakeN("Other")->IsWanted(0));
    WriteRegistryDword(HKEY_CURRENT_USER, DefaultSettings::NOTIFICATION_KEY, "Courses", 2);
    EXPECT_TRUE(product->IsWanted(0));

    EXPECT_FALSE(MakeN("Unchecked")->RunAction(0));
    EXPECT_EQ(stored("Unchecked"), 1);
    EXPECT_EQ(environment_->openedPages.size(), 1U);
}
