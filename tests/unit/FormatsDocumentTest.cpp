// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The examples and tables of docs/formats.md, read by the program: they mean what is written beside them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QLocale>
#include <QStringEncoder>
#include <boost/make_shared.hpp>

#include "app/CSelfUpdate.h"
#include "app/settings/CRecordKeeper.h"
#include "i18n/Language.h"
#include "i18n/LanguageTable.h"
#include "i18n/QStringsTranslator.h"
#include "i18n/ResourceManager.h"
#include "net/ProxyHandlerBase.h"
#include "platform/Addresses.h"
#include "products/CProductListController.h"
#include "products/CUpdateXmlReader.h"
#include "products/CVersionStringRange.h"
#include "support/FakeDownloader.h"
#include "support/FakeEnvironment.h"
#include "support/MarkdownDocument.h"
#include "support/TextPrinting.h"

namespace {

using testing::ElementsAre;

const QString SITE = "http://updates.example.com/";

const MarkdownDocument& Document() {
    static const MarkdownDocument document("docs/formats.md");
    return document;
}

std::string Example(const QString& title) {
    return Document().Examples().at(title).toStdString();
}

CVersionString Version(const QString& cell) {
    return CVersionString(cell == "(none)" ? CAtlString() : CAtlString(cell));
}

// What a remote description of the document offers to a computer with that version.
class Descriptions : public CUpdateXmlReader {
public:
    Descriptions(const char* remote, const QString& installed) {
        QString local = Document().Examples().at("/opt/vardo/share/SoftwareUpdateVN.xml");
        local.replace("11.0.580.0", installed);
        EXPECT_TRUE(CUpdateXmlReader::ParseLocal(local.toUtf8().constData()));
        EXPECT_TRUE(CUpdateXmlReader::ParseRemote(Example(SITE + remote).c_str()));
    }
    QString Offer() const { return GetUpdateVersion().GetString().ToQString(); }

protected:
    CAtlString GetLocalFile() const override { return {}; }
    CAtlString GetRemoteFile() override { return {}; }
};

// The program's folder, the machine's and the user's settings and the site of the examples.
class FormatsDocument : public testing::Test {
protected:
    void SetUp() override {
        for (const auto& [title, text] : Document().Examples())
            LayOut(title, QString(text).replace("/opt/vardo", root_));
        tree_.Write("gallery/content-tool", "");
        tree_.Write("share/SoftwareUpdateVPL.xml", Example("/opt/vardo/share/SoftwareUpdateVN106.xml"));
        environment_->sharedDataFolder = CVardoDirectoryPath(tree_.Path("share").c_str());
    }
    void TearDown() override {
        SetLocaleOverride({});
        DestroyResourceManager();
        for (const char* folder : {"XDG_CONFIG_DIRS", "XDG_CONFIG_HOME"})
            for (const char* name : {"/VARDO Technologies.conf", "/VARDO Technologies"})
                std::filesystem::remove_all(std::string(std::getenv(folder)) + name);
        std::filesystem::remove(MARKER);
    }

    void LayOut(const QString& title, const QString& text) {
        if (title.startsWith("http:"))
            return downloader_->Serve(title.toStdString(), text.toStdString());
        QString file = QString(title).replace("/opt/vardo", root_);
        file.replace("/etc/xdg", std::getenv("XDG_CONFIG_DIRS"));
        file.replace("~/.config", std::getenv("XDG_CONFIG_HOME"));
        QStringEncoder utf16(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
        const QByteArray bytes = file.endsWith(".strings") ? utf16(text) : text.toUtf8();
        std::filesystem::create_directories(std::filesystem::path(file.toStdString()).parent_path());
        std::ofstream(file.toStdString()) << bytes.toStdString();
    }

    // The rows of the window after a check: name, versions, caption of the button.
    static QStringList Rows(const IProduct::List& products) {
        QStringList rows;
        for (const auto& product : products)
            for (unsigned i = 0; i < product->GetItemCount(); ++i)
                rows += QStringList{product->GetName(), product->GetInstalledVersion(i).ToQString(),
                                    product->GetLatestVersion(i).ToQString(),
                                    product->HasAction(i)
                                        ? product->GetActionTexts()[product->IsUpdateAvailable(i)]
                                        : "-"}
                            .join('|');
        rows.sort();
        return rows;
    }

    const std::string MARKER = CUpdateXmlReader::TEST_MARKER.ToQString().toStdString();
    TemporaryTree tree_;
    const QString root_ = QString::fromStdString(tree_.Root());
    boost::shared_ptr<FakeEnvironment> environment_ = boost::make_shared<FakeEnvironment>();
    boost::shared_ptr<FakeDownloader> downloader_ = boost::make_shared<FakeDownloader>();
};

}  // namespace

TEST_F(FormatsDocument, TheExamplesTogetherShowTheRowsOfTheText) {
    EXPECT_EQ(Document().Examples().size(), 19U) << "every example belongs into a test of this file";
    CProductListController controller(environment_);
    controller.SetDownloader(downloader_);
    ASSERT_TRUE(controller.LoadProductList());
    controller.UpdateProductList();
    controller.FindInstalled();
    controller.CheckForUpdates();
    const auto day = [](int month, int date) {
        return QLocale::system().toString(QDate(2026, month, date), QLocale::ShortFormat);
    };
    EXPECT_THAT(Rows(controller.GetProducts()),
                ElementsAre("Kostenlose Kurse für Ihre neue Tafel: Termine in Ihrer Nähe| | |More...",
                            "VARDO Board Software|9.7.105.0|9.7.105.0|Current",
                            "VARDO Gallery Pictures|" + day(5, 4) + "|" + day(6, 15) + "|Update",
                            "VARDO Notebook|10.6.141.0||-", "VARDO Notebook|11.0.580.0|11.2.0.0|Update",
                            "VARDO Poll|10.6.141.0|10.6.141.0|-"));
    const std::string site = SITE.toStdString();
    EXPECT_THAT(downloader_->addresses,
                ElementsAre(site + "products.xml", site + "updates/notebook.xml", site + "updates/board.xml",
                            site + "updates/notebook.xml", site + "gallery/gallery_categories.xml",
                            site + "notices/courses.xml"));
    const IProduct& notification = *controller.GetProducts().back();
    EXPECT_FALSE(notification.IsWanted(0)) << "dismissed in the user's settings";
    SetLocaleOverride("fr");
    EXPECT_TRUE(notification.GetName().startsWith("Free courses"));
    for (const int date : {1, 2, 31, 32}) {
        environment_->today = QDate(2026, 3, 1).addDays(date - 1);
        EXPECT_EQ(notification.GetItemCount(), date == 2 || date == 31 ? 1U : 0U) << date << " March";
    }
}

TEST_F(FormatsDocument, VersionsRangesAndAddressesAreThoseOfTheTables) {
    for (const QStringList& row : Document().Table("versions")) {
        const bool valid = row[1] != "invalid";
        EXPECT_EQ(Version(row[0]).IsValid(), valid) << row[0].toStdString();
        EXPECT_EQ(Version(row[0]).GetString().ToQString(), row[valid ? 1 : 0]);
    }
    for (const QStringList& row : Document().Table("ranges"))
        for (const int column : {2, 3})
            for (const QString& version : row[column].split(' ', Qt::SkipEmptyParts))
                EXPECT_EQ(CVersionStringRange(Version(row[0]), Version(row[1])).Contains(Version(version)),
                          column == 2)
                    << row.join('|').toStdString();
    for (const QStringList& row : Document().Table("addresses"))
        EXPECT_EQ(row[0] == "add" ? WithTrailingSlash(row[1]) + row[2] : JoinTrimmed(row[1], row[2]),
                  CAtlString(row[3]));
}

TEST_F(FormatsDocument, OffersAreThoseOfTheTableAndTheText) {
    for (const QStringList& row : Document().Table("offers")) {
        const Descriptions notebook("updates/notebook.xml", row[0]);
        EXPECT_EQ(notebook.Offer(), row[1]) << row[0].toStdString();
        EXPECT_EQ(notebook.IsUpdateAvailable(), row[2] == "yes") << row[0].toStdString();
    }
    const auto board = [](const char* installed) {
        return Descriptions("updates/board.xml", installed).Offer();
    };
    EXPECT_EQ(board("9.7.105.0"), "9.7.105.0");
    EXPECT_EQ(board("9.5.0.0"), "9.7.105.0");
    std::ofstream(MARKER).close();
    EXPECT_EQ(board("9.7.105.0"), "9.8.0.0");
    EXPECT_EQ(board("9.5.0.0"), "9.6.0.0");
}

TEST_F(FormatsDocument, TheProgramsOwnUpdateIsThatOfTheText) {
    const std::string site = SITE.toStdString();
    downloader_->Serve(site + "program/installer.sh", "#!/bin/sh\n");
    CSelfUpdate program("VardoProductUpdate.xml", *environment_);
    program.SetDownloader(downloader_);
    EXPECT_TRUE(program.LoadLocal() && !program.IsNoUpdates() && program.LoadRemote());
    EXPECT_TRUE(program.IsUpdateAvailable() && program.DownloadInstaller());
    EXPECT_EQ(program.GetUpdateArgument(), CAtlString("--from 3.1.555.0"));
    EXPECT_THAT(downloader_->addresses,
                ElementsAre(site + "program/VardoProductUpdate.xml", site + "program/installer.sh"));
}

TEST_F(FormatsDocument, LanguagesAreThoseOfTheTableAndTheTexts) {
    EXPECT_EQ(GetLocale(true), "0407") << "the user's choice in the language setup";
    EXPECT_TRUE(IsRightToLeft("ur") && IsRightToLeft("0420") && !IsRightToLeft("de"));
    EXPECT_EQ(LanguageAttributeById(0x420, "NativeName"), CAtlString("اردو"));
    QStringsTranslator translator;
    translator.load("de_AT", "VARDOProductUpdate", root_ + "/Languages/");
    const std::pair<const char*, QString> texts[] = {
        {"More...", "Mehr..."},
        {"Close", "Schließen"},
        {"Could not open a Web browser. Please open a Web browser manually and go to: \n",
         "Es konnte kein Webbrowser geöffnet werden. Bitte gehen Sie selbst zu: \n"},
        {"not there", "not there"}};
    for (const auto& [key, text] : texts)
        EXPECT_EQ(translator.translate("", key), text);
}

TEST_F(FormatsDocument, SettingsAreTheUsersAndElseTheMachines) {
    CRecordKeeper record;
    record.Load();
    EXPECT_EQ(record.GetInterval(), 14);
    EXPECT_FALSE(record.GetCheckUpdates());
    EXPECT_EQ(QDate::fromJulianDay(record.GetLastChecked()), QDate(2026, 3, 15));
    std::filesystem::remove(std::string(std::getenv("XDG_CONFIG_HOME")) + "/VARDO Technologies.conf");
    record.Load();
    EXPECT_EQ(record.GetInterval(), 7);
    EXPECT_TRUE(record.GetCheckUpdates());
    ProxyHandlerBase proxy;
    proxy.LoadProxySettings();
    CAtlString host, userName, password;
    int port = 0;
    proxy.GetProxySettings(host, port, userName, password);
    EXPECT_EQ(host, CAtlString("proxy.example.com"));
    EXPECT_EQ(port, 3128);
}
