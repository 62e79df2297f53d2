// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The program reads the examples and tables of docs/formats.md and docs/settings.md as these pages say.
#include <gmock/gmock.h>
#include <QLocale>
#include <map>

#include "DataTable.h"
#include "ProductTest.h"
#include "app/CSelfUpdate.h"
#include "app/settings/CRecordKeeper.h"
#include "i18n/Language.h"
#include "net/ProxyHandlerBase.h"
#include "platform/files/Addresses.h"
#include "products/CVersionStringRange.h"
#include "support/Utf16Bytes.h"

namespace {

const std::string SITE = "http://updates.example.com/";

const QString& Document() {
    static const QString text = SourceText("docs/formats.md") + SourceText("docs/settings.md");
    return text;
}

// The texts of the fenced blocks, by their titles (```xml title="share/products.xml").
std::map<QString, QString> Examples() {
    std::map<QString, QString> examples;
    const QStringList parts = Document().split("\n```");
    for (qsizetype i = 1; i < parts.size(); i += 2) {
        const QString title = parts[i].section('\n', 0, 0).section('"', 1, 1);
        EXPECT_NE(title, "") << parts[i].toStdString();
        EXPECT_TRUE(examples.try_emplace(title, parts[i].section('\n', 1) + '\n').second)
            << title.toStdString();
    }
    return examples;
}

// The cells of the table that follows a comment with its name (<!-- table: versions -->), row by row.
std::vector<QStringList> Table(const char* name) {
    std::vector<QStringList> rows;
    const QString table = Document().section(QString("<!-- table: %1 -->").arg(name), 1, 1);
    for (const QString& line : table.section("\n|---", 1, 1).section("\n\n", 0, 0).split('\n').mid(1)) {
        rows.push_back(QString(line).remove('`').split('|').mid(1));
        for (QString& cell : rows.back())
            cell = cell.trimmed();
    }
    EXPECT_FALSE(rows.empty()) << name;
    return rows;
}

CVersionString Version(const QString& cell) {
    return CVersionString(cell == "(none)" ? CAtlString() : CAtlString(cell));
}

// Lays out the examples: the program's folder, the settings of the machine and of the user, and the site.
class FormatsDocument : public ProductTest {
protected:
    void SetUp() override {
        for (const auto& [title, text] : Examples())
            LayOut(title, QString(text).replace("/opt/vardo", root_));
        shared_.Write("gallery/content-tool", "");
        LayOut("/opt/vardo/share/SoftwareUpdateVPL.xml", Local("notebook.xml", "10.6.141.0"));
        environment_->sharedDataFolder = CVardoDirectoryPath(shared_.Path("share").c_str());
    }
    void TearDown() override {
        SetLocaleOverride({});
        for (const char* folder : {"XDG_CONFIG_DIRS", "XDG_CONFIG_HOME"})
            for (const char* name : {"/VARDO Technologies.conf", "/VARDO Technologies"})
                std::filesystem::remove_all(qEnvironmentVariable(folder).toStdString() + name);
        std::filesystem::remove(MARKER);
    }

    void LayOut(const QString& title, const QString& text) {
        if (title.startsWith("http:"))
            return downloader_->Serve(title.toStdString(), text.toStdString());
        QString file = QString(title).replace("/opt/vardo", root_);
        file.replace("/etc/xdg", std::getenv("XDG_CONFIG_DIRS"));
        file.replace("~/.config", std::getenv("XDG_CONFIG_HOME"));
        std::filesystem::create_directories(std::filesystem::path(file.toStdString()).parent_path());
        std::ofstream(file.toStdString())
            << (file.endsWith(".strings") ? Utf16Bytes(text.toStdU16String()) : text.toStdString());
    }

    // The example's local description with another remote one and another installed version.
    static QString Local(const QString& remote, const QString& installed) {
        QString local = Examples().at("/opt/vardo/share/SoftwareUpdateVN.xml");
        return local.replace("notebook.xml", remote).replace("11.0.580.0", installed);
    }
    // What the remote description offers to that installed version, and whether that is an update.
    std::pair<QString, bool> Offer(const QString& remote, const QString& installed) {
        LayOut("/opt/vardo/share/Other.xml", Local(remote, installed));
        const Product product = Make("<Product Name='n' BaseXml='Other'/>");
        EXPECT_TRUE(product->FindInstalled() && Check(product));
        return {product->GetLatestVersion(0).ToQString(), product->IsUpdateAvailable(0)};
    }

    const std::string MARKER = CUpdateXmlReader::TEST_MARKER.ToQString().toStdString();
    const QString root_ = QString::fromStdString(shared_.Root());
};

}  // namespace

TEST_F(FormatsDocument, TheExamplesTogetherShowTheRowsOfTheText) {
    EXPECT_EQ(Examples().size(), 19U) << "every example belongs into a test of this file";
    CProductListController controller(environment_);
    controller.SetDownloader(downloader_);
    ASSERT_TRUE(controller.LoadProductList());
    controller.UpdateProductList();
    EXPECT_EQ(downloader_->addresses.back(), SITE + "products.xml");
    controller.FindInstalled();
    controller.CheckForUpdates();
    const IProduct& notification = *controller.GetProducts().back();
    EXPECT_FALSE(notification.IsWanted(0)) << "dismissed in the user's settings";
    const auto day = [](int month, int date) {
        return QLocale::system().toString(QDate(2026, month, date), QLocale::ShortFormat).toStdString();
    };
    const std::string page = "https://www.example.com/";
    EXPECT_THAT(
        RowsOf(controller),
        testing::UnorderedElementsAre(
            "Kostenlose Kurse für Ihre neue Tafel: Termine in Ihrer Nähe| | |More...|" + page + "courses",
            "VARDO Board Software|9.7.105.0|9.7.105.0|Current|" + page + "board/9.7",
            "VARDO Gallery Pictures|" + day(5, 4) + "|" + day(6, 15) + "|Update|",
            "VARDO Notebook|10.6.141.0||-|",
            "VARDO Notebook|11.0.580.0|11.2.0.0|Update|" + page + "notebook/11.2",
            "VARDO Poll|10.6.141.0|10.6.141.0|-|"));
    SetLocaleOverride("fr");
    EXPECT_TRUE(notification.GetName().startsWith("Free courses"));
    for (const int date : {1, 2, 31, 32}) {
        environment_->today = QDate(2026, 3, 1).addDays(date - 1);
        EXPECT_EQ(notification.GetItemCount(), date == 2 || date == 31 ? 1U : 0U) << date << " March";
    }
}

TEST_F(FormatsDocument, VersionsRangesAndAddressesAreThoseOfTheTables) {
    for (const QStringList& row : Table("versions")) {
        const bool valid = row[1] != "invalid";
        EXPECT_EQ(Version(row[0]).IsValid(), valid) << row[0].toStdString();
        EXPECT_EQ(Version(row[0]).GetString().ToQString(), row[valid ? 1 : 0]);
    }
    for (const QStringList& row : Table("ranges"))
        for (const int column : {2, 3})
            for (const QString& version : row[column].split(' ', Qt::SkipEmptyParts))
                EXPECT_EQ(CVersionStringRange(Version(row[0]), Version(row[1])).Contains(Version(version)),
                          column == 2)
                    << row.join('|').toStdString();
    for (const QStringList& row : Table("addresses"))
        EXPECT_EQ(row[0] == "add" ? WithTrailingSlash(row[1]) + row[2] : JoinTrimmed(row[1], row[2]),
                  CAtlString(row[3]));
}

TEST_F(FormatsDocument, OffersAreThoseOfTheTableAndTheText) {
    for (const QStringList& row : Table("offers"))
        EXPECT_EQ(Offer("notebook.xml", row[0]), std::pair(row[1], row[2] == "yes"));
    std::ofstream(MARKER).close();
    EXPECT_EQ(Offer("board.xml", "9.7.105.0").first, "9.8.0.0");
    EXPECT_EQ(Offer("board.xml", "9.5.0.0").first, "9.6.0.0");
    EXPECT_EQ(Offer("notebook.xml", "11.0.580.0").first, "11.4.0.0") << "a range without a test product";
    LayOut("/opt/vardo/share/Test.xml", Local("board.xml", "1.0.0.0").replace("<Product", "<TestProduct"));
    EXPECT_FALSE(Make("<Product Name='n' BaseXml='Test'/>")->FindInstalled());
    std::filesystem::remove(MARKER);
    std::filesystem::create_symlink(VARDO_SOURCE_DIR "/docs/formats.md", MARKER);
    EXPECT_EQ(Offer("board.xml", "9.7.105.0").first, "9.7.105.0");
    EXPECT_EQ(Offer("board.xml", "9.5.0.0").first, "9.7.105.0");
    EXPECT_EQ(Offer("board.xml", "beta"), std::pair(QString("9.7.105.0"), true)) << "an invalid version";
}

TEST_F(FormatsDocument, TheProgramsOwnUpdateIsThatOfTheText) {
    downloader_->Serve(SITE + "program/installer.sh", "#!/bin/sh\n");
    CSelfUpdate program("VardoProductUpdate.xml", *environment_);
    program.SetDownloader(downloader_);
    EXPECT_TRUE(program.LoadLocal() && !program.IsNoUpdates() && program.LoadRemote());
    EXPECT_TRUE(program.IsUpdateAvailable() && program.DownloadInstaller());
    EXPECT_EQ(program.GetInstallerPath(), CAtlString(downloader_->files.back().c_str())) << "no key, no seal";
    EXPECT_EQ(program.GetUpdateArgument(), CAtlString("--from 3.1.555.0"));
}

TEST_F(FormatsDocument, SettingsAreTheUsersAndElseTheMachines) {
    CRecordKeeper record;
    record.Load();
    EXPECT_TRUE(!record.GetCheckUpdates() && record.GetInterval() == 14);
    EXPECT_EQ(QDate::fromJulianDay(record.GetLastChecked()), QDate(2026, 3, 15));
    std::filesystem::remove(qEnvironmentVariable("XDG_CONFIG_HOME").toStdString() +
                            "/VARDO Technologies.conf");
    record.Load();
    EXPECT_TRUE(record.GetCheckUpdates() && record.GetInterval() == 7);
    ProxyHandlerBase proxy;
    proxy.LoadProxySettings();
    CAtlString host, userName, password;
    int port = 0;
    proxy.GetProxySettings(host, port, userName, password);
    EXPECT_EQ(host, CAtlString("proxy.example.com"));
    EXPECT_EQ(port, 3128);
}
