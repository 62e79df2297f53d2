// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The check and the program read the same published files: the check foretells what the program does.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <climits>
#include <filesystem>
#include <map>
#include <sstream>

#include "CatalogTest.h"
#include "DataTable.h"
#include "catalog/CSite.h"
#include "catalog/OfferBorders.h"
#include "products/CProductVersion.h"
#include "publish/CPreview.h"
#include "publish/FolderProgram.h"
#include "support/Minisign.h"

namespace {

const std::string LIST = "site/products.xml";
const std::string REMOTE = "site/updates/notebook.xml";
const std::string MESSAGE = "site/notices/courses.xml";
const std::string GERMAN = "program/Languages/de/VARDOProductUpdate.strings";
const std::string OWN_OFFER = "site/program/VardoProductUpdate.xml";
const QString OWN_OFFERS_LINE = "site/program/VardoProductUpdate.xml:3: error";

// A block of data/catalog-mistakes.txt.
struct Mistake {
    QString situation, file, what, with;
    // The file's new path; empty when it keeps its own.
    QString renamed;
    // The finding's file, line and severity, and its code.
    QString place, code;
    // Where the program shows it ("row", "no row" or the key of a text), and what it shows.
    QString kind, shown;
};

// The rest of each line that begins with the sign.
QString Behind(const QString& sign, const QStringList& lines) {
    QStringList texts;
    for (const QString& line : lines)
        if (line.startsWith(sign))
            texts << line.mid(sign.size());
    return texts.join('\n');
}

std::vector<Mistake> Mistakes() {
    std::vector<Mistake> mistakes;
    QString file;
    for (const QString& block : SourceText("tests/unit/data/catalog-mistakes.txt").split("\n\n").mid(1)) {
        const QStringList lines = block.split('\n', Qt::SkipEmptyParts);
        if (lines.size() < 4) {
            file = Behind("== ", lines);
            continue;
        }
        const QString& finding = lines[lines.size() - 2];
        mistakes.push_back({lines[0], file, Behind("- ", lines), Behind("+ ", lines), Behind("> ", lines),
                            (finding[0].isDigit() ? file + ':' : "") + finding.section(" [", 0, 0),
                            finding.section(" [", 1).chopped(1), lines.last().section(": ", 0, 0),
                            lines.last().section(": ", 1)});
    }
    return mistakes;
}

}  // namespace

TEST_F(CatalogTest, TheSamplesHaveNoErrorButTheMissingFile) {
    const QStringList errors = Check().filter(": error: ");
    EXPECT_EQ(errors.size(), 1) << errors.join('\n').toStdString();
    EXPECT_EQ(Count(errors, "program/share/SoftwareUpdateVINK.xml:3:", "missing-file"), 1);
    EXPECT_THAT(Rows(), testing::IsSupersetOf({testing::HasSubstr("VARDO Ink|3.0.12.0||"),
                                               testing::HasSubstr("Free courses"),
                                               testing::HasSubstr("VARDO Timeline|1.2.3.4|1.2.3.4")}));
}

TEST_F(CatalogTest, WhatIsFoundIsWhatTheProgramDoes) {
    const QStringList good = Check();
    const std::string languages = shared_.Path("program/Languages/");
    const std::string installedList = ReadWholeFile(shared_.Path("program/share/products.xml"));
    EXPECT_EQ(InGerman("Close", languages), "Schließen|<");
    for (const Mistake& mistake : Mistakes()) {
        SCOPED_TRACE(mistake.situation.toStdString());
        const std::string file = mistake.file.toStdString();
        const std::string before = ReadWholeFile(shared_.Path(file));
        const std::string other = mistake.renamed.toStdString();
        if (other.empty())
            Alter(file, mistake.what, mistake.with);
        else
            std::filesystem::rename(shared_.Path(file), shared_.Path(other));
        const QStringList findings = Check(good);
        EXPECT_GT(Count(findings, mistake.place, mistake.code), 0) << findings.join('\n').toStdString();
        EXPECT_TRUE(mistake.code != "unknown-element" || Count(findings, "", "missing-page") == 0);
        const auto isShown = testing::HasSubstr(mistake.shown.toStdString());
        if (mistake.kind == "row")
            EXPECT_THAT(Rows(), testing::Contains(isShown));
        else if (mistake.kind == "no row")
            EXPECT_THAT(Rows(), testing::Not(testing::Contains(isShown)));
        else
            EXPECT_EQ(InGerman("Close", languages), mistake.shown.toStdString());
        if (!other.empty())
            std::filesystem::remove(shared_.Path(other));
        shared_.Write(file, before);
        // The program may have replaced it by the site's list.
        shared_.Write("program/share/products.xml", installedList);
    }
}

TEST_F(CatalogTest, StringsFilesOfWrongBytesGiveNoTexts) {
    const std::string languages = shared_.Path("program/Languages/");
    Alter(GERMAN, "\"Close\" = \"", "\"Close\" = \"" + QString(10300, 'x'));
    EXPECT_EQ(Count(Check(), (GERMAN + ":20: error").c_str(), "cut-text"), 1);
    EXPECT_THAT(InGerman("Close", languages), testing::StartsWith("xxxx"));
    const std::string good = ReadWholeFile(shared_.Path("program/Languages/fr/VARDOProductUpdate.strings"));
    for (const auto& [bytes, code] :
         {std::pair(std::string("\"Close\" = \"Zu\";"), "not-utf16"), std::pair(good + "x", "not-utf16"),
          std::pair(std::string(), "unreadable")}) {
        shared_.Write(GERMAN, bytes);
        EXPECT_EQ(Count(Check(), (GERMAN + ":1: error").c_str(), code), 1);
    }
    EXPECT_EQ(InGerman("Close", languages), "Close|<");
}

TEST_F(CatalogTest, EncodingsAreThoseOfEachReader) {
    // In UTF-8 a lead byte swallows the quote after it. Only descriptions may declare single bytes.
    const std::string head = "<?xml version='1.0' encoding='ISO-8859-1'?>";
    shared_.Write(REMOTE, head +
                              "<x Location='Server'><Product UpdateVersion='11.5.0.0' "
                              "UpdateInstallFile='\xC3' UpdateWebPage='http://h/'/></x>");
    EXPECT_EQ(Count(Check(), "site/updates/notebook.xml:1: error", "not-utf8"), 1);
    EXPECT_THAT(Rows(), testing::Contains(testing::HasSubstr("|11.5.0.0|Update|http://h/")));
    shared_.Write(LIST, head + "<x Version='9.0.0.0'><Product Name='\xC3' BaseXml='SoftwareUpdateVN'/></x>");
    for (const char* code : {"malformed", "not-utf8"})
        EXPECT_EQ(Count(Check(), "site/products.xml:1: error", code), 1);
    EXPECT_THAT(Rows(), testing::Contains(testing::HasSubstr("VARDO Ink")));
}

TEST_F(CatalogTest, AProgramThatIsOfferedNeedsItsInstaller) {
    const std::string local = "program/share/VardoProductUpdate.xml";
    EXPECT_EQ(Count(Check(), "", "no-installer"), 0) << "nothing newer";
    Alter(OWN_OFFER, "3.1.555.0", "3.2.0.0");
    EXPECT_EQ(Count(Check(), OWN_OFFERS_LINE, "no-installer"), 1) << "no such file";
    shared_.Write("site/program/installer", "#!/bin/sh\n");
    EXPECT_EQ(Count(Check(), "", "no-installer") + Count(Check(), "", "not-startable"), 0);
    std::filesystem::permissions(shared_.Path("site/program/installer"), std::filesystem::perms::owner_all);
    EXPECT_EQ(Count(Check(), "site/program/installer:1: note", "private-file"), 1);
    std::filesystem::permissions(shared_.Path("site"), std::filesystem::perms::owner_all);
    EXPECT_EQ(Count(Check(), "site:1: note", "private-file"), 1);
    const auto preview = [this](const char* version) {
        return CPreview(CCatalog(shared_.Root().c_str(), {}), {{CPreview::OwnKey(), version}}).ToText();
    };
    EXPECT_TRUE(preview("3.1.555.0").endsWith("  3.2.0.0           accepted\n"));
    const std::string offer = ReadWholeFile(shared_.Path(OWN_OFFER));
    Alter(OWN_OFFER, "UpdateInstallURL=\"http://", "UpdateInstallURL=\"http://www.");
    EXPECT_TRUE(preview("3.1.555.0").contains("  refused: the installer \"http://www."));
    shared_.Write(OWN_OFFER, offer);
    EXPECT_TRUE(preview("3.2.0.0").endsWith("    3.2.0.0                             -\n"));
    shared_.Write("site/program/installer", "!<arch>\n");
    EXPECT_EQ(Count(Check(), OWN_OFFERS_LINE, "not-startable"), 1);
    EXPECT_TRUE(preview("3.1.555.0").contains("  refused: \""));
    Alter(OWN_OFFER, "UpdateInstallFile=", "InstallFile=");
    EXPECT_EQ(Count(Check(), OWN_OFFERS_LINE, "no-installer"), 1) << "no name";
    Alter(local, "CurrentVersion=", "NoUpdates=\"True\" CurrentVersion=");
    EXPECT_EQ(Count(Check(), (local + ":3: warning").c_str(), "bad-value"), 1);
    CProductVersion program{CVardoFilePath(shared_.Path(local).c_str())};
    EXPECT_TRUE(program.LoadLocal() && !program.IsNoUpdates());
    Alter(local, "True", "true");
    EXPECT_TRUE(preview("3.1.555.0").contains("    nobody: NoUpdates is set\n"));
}

// InstallerSealTest holds that the program refuses the same installers.
TEST_F(CatalogTest, AProgramWithTheMakersKeyNeedsASignedInstaller) {
    const std::string contents = "#!/bin/sh\n";
    const std::string comment = "file:installer version:3.2.0.0";
    const Minisign maker;
    Alter(OWN_OFFER, "3.1.555.0", "3.2.0.0");
    shared_.Write("site/program/installer", contents);
    const QStringList withoutKey = Check();
    shared_.Write("program/share/VardoProductUpdate.pub", maker.Key());
    EXPECT_EQ(Count(Check(withoutKey), OWN_OFFERS_LINE, "unsigned-installer"), 1) << "no signature";
    // The last text is part of the finding; it is empty when there is no finding.
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"another maker's", Minisign().Sign(contents, comment), "installer.minisig\" was made with the key "},
        {"another file's", maker.Sign(contents, "file:old version:3.2.0.0"),
         "is for the file \"old\", and the offer's is \"installer\""},
        {"an older version's", maker.Sign(contents, "file:installer version:3.1.0.0"),
         "is for the version \"3.1.0.0\", and the offer's is \"3.2.0.0\""},
        {"the tool's own comment", maker.Sign(contents, ""), "is for the file \"setup.bin\""},
        {"another argument's", maker.Sign(contents, comment + " argument:a%20b"),
         "is for the argument \"a%20b\", and the offer's is \"\""},
        {"an expired one", maker.Sign(contents, comment + " until:20200131"), "was good until \"20200131\""},
        {"not a signature", "x", "installer.minisig\" is no signature of minisign's"},
        {"other contents'", maker.Sign(contents + "x", comment), "installer\" is not what was signed with"},
        {"the offer's", maker.Sign(contents, comment), ""},
    };
    for (const auto& [situation, signature, text] : cases) {
        SCOPED_TRACE(situation);
        shared_.Write("site/program/installer.minisig", signature);
        const QStringList findings = Check(withoutKey);
        EXPECT_EQ(findings.size(), *text ? 1 : 0) << findings.join('\n').toStdString();
        EXPECT_EQ(Count(findings.filter(text), OWN_OFFERS_LINE, "unsigned-installer"), *text ? 1 : 0);
    }
    Alter(
        OWN_OFFER, "/>",
        "><Compatibility><Range VersionTo='2.0.0.0'><Product UpdateVersion='3.0.0.0' UpdateInstallFile='old' "
        "UpdateInstallURL='http://127.0.0.1:8080/program'/></Range></Compatibility></Product>");
    EXPECT_EQ(Count(Check(), OWN_OFFERS_LINE, "no-installer"), 1) << "of a range";
    shared_.Write("site/program/old", contents);
    EXPECT_EQ(Count(Check(), OWN_OFFERS_LINE, "unsigned-installer"), 1);
    shared_.Write("site/program/old.minisig", Minisign().Sign(contents, "file:old version:3.0.0.0"));
    EXPECT_EQ(Count(Check(), "site/program/VardoProductUpdate.xml:3: note", "older-key"), 1);
    shared_.Write("site/program/old.minisig", Minisign().Sign(contents, "file:old version:3.0.0.1"));
    EXPECT_EQ(Count(Check(), OWN_OFFERS_LINE, "unsigned-installer"), 1) << "for another version";
    shared_.Write("site/program/old.minisig", Minisign().Sign(contents, "file:old version:3.0.0.0"));
    Alter(OWN_OFFER, "VersionTo='2.0.0.0'", "VersionTo='3.1.555.0'");
    Alter(OWN_OFFER, "\"installer\"", "\"gone\"");
    EXPECT_EQ(Count(Check(), OWN_OFFERS_LINE, "unsigned-installer"), 1)
        << "the installed one is in the range";
    EXPECT_EQ(Count(Check(), OWN_OFFERS_LINE, "no-installer"), 1) << "above the range";
    EXPECT_EQ(VersionAfter(CVersionString(L"1.9.9.2147483647")).GetString(), L"1.9.10.0");
    EXPECT_FALSE(VersionAfter(CVersionString(QString("%1.%1.%1.%1").arg(INT_MAX))).IsValid());
}

TEST_F(CatalogTest, TheSiteIsWhereMostFilesAreAndItsListTheOneThatInstallationsAskFor) {
    const QString root = QString::fromStdString(shared_.Root());
    const std::string local = "program/share/SoftwareUpdateVN.xml";
    Alter(local, "\"notebook.xml\"", "\"SoftwareUpdateVN.xml\"");
    Alter(local, "8080/updates", "8080");
    EXPECT_EQ(Count(Check(), (local + ":3: error").c_str(), "missing-file"), 1)
        << "it does not lead to itself";
    const QString list = QString::fromStdString(ReadWholeFile(shared_.Path(LIST)));
    shared_.Write("site/beta/products.xml", QString(list).replace("8080/", "8080/beta/").toStdString());
    const CCatalog catalog(root, {});
    const auto& site = catalog.GetSite();
    EXPECT_TRUE(site && site->GetFolder() == root + "/site");
    EXPECT_EQ(catalog.PublishedList()->GetPath(), root + "/site/products.xml");
}

TEST_F(CatalogTest, ADescriptionOfNoListedProductIsNotRead) {
    shared_.Write("site/CAPITALS.XML", "<a");
    EXPECT_EQ(Count(Check(), "site/CAPITALS.XML:", "malformed"), 1);
    std::filesystem::create_directory_symlink("/usr", shared_.Path("site/linked"));
    EXPECT_EQ(Count(Check(), "site/linked:1: error", "unread-folder"), 1);
    std::filesystem::create_directory_symlink("updates", shared_.Path("site/latest"));
    EXPECT_EQ(Count(Check(), "site/latest", "unread-folder"), 0) << "it is read by its own name";
    Alter("program/share/SoftwareUpdateVN.xml", "8080/updates", "8080/linked/bin");
    Alter("program/share/SoftwareUpdateVN.xml", "\"notebook.xml\"", "\"env\"");
    EXPECT_EQ(Check().filter("through a linked or hidden folder").size(), 1);
    Alter(LIST, "SoftwareUpdateVTL", "SoftwareUpdateVTX");
    EXPECT_EQ(Count(Check(), "program/share/SoftwareUpdateVTL.xml:1: note", "unlisted"), 1);
    EXPECT_THAT(Rows(), testing::Not(testing::Contains(testing::HasSubstr("VARDO Timeline"))));
}

TEST_F(CatalogTest, TheCommandLineDecidesWhereTheSiteIsAndHowTheFindingsLook) {
    const auto run = [](const QStringList& arguments, int status) {
        std::ostringstream out;
        std::ostringstream err;
        EXPECT_EQ(RunCatalogCheck(QStringList{"VARDOCatalogCheck"} + arguments, out, err), status)
            << err.str();
        EXPECT_EQ(err.str().empty(), status != EXIT_WRONG_USAGE);
        return out.str();
    };
    const QString root = QString::fromStdString(shared_.Root());
    const std::string message = shared_.Path(MESSAGE);
    EXPECT_THAT(run({root}, EXIT_ERRORS),
                testing::HasSubstr(message + ":4: warning: there is no text for pt_BR"));
    const std::string note = "page.html:1: note: the program reads no such file [unknown-file]\n";
    EXPECT_THAT(run({root + "/site/"}, EXIT_WARNINGS),
                testing::AllOf(testing::HasSubstr(note), testing::EndsWith("\nno errors, 18 warnings\n")));
    EXPECT_THAT(run({"--site", "http://127.0.0.1:8080/other", root + "/site"}, EXIT_WARNINGS),
                testing::HasSubstr("none was followed [not-followed]\n"));
    EXPECT_EQ(run({root + "/site/pages"}, EXIT_CLEAN),
              shared_.Path("site/pages/" + note) + "no errors, no warnings\n");
    EXPECT_EQ(run({"--quiet", root + "/site/pages"}, EXIT_CLEAN), "");
    EXPECT_THAT(run({"--preview", root}, EXIT_CLEAN),
                testing::HasSubstr("    nobody beside SoftwareUpdateVBS 9.0.0.0 to 9.9.9.9\n"));
    std::filesystem::create_directory(shared_.Path("empty"));
    EXPECT_EQ(
        run({root + "/empty"}, EXIT_ERRORS),
        shared_.Path("empty:1: error: the folder holds no file [empty-folder]\n1 error, no warnings\n"));
    EXPECT_THAT(run({"--site=http://127.0.0.1:8080=" + root + "/site", root}, EXIT_ERRORS),
                testing::EndsWith("\n1 error, 19 warnings\n"));
    std::filesystem::remove(shared_.Path("site/gallery/gallery_categories.xml"));
    EXPECT_THAT(run({root + "/site", "--site", "http://127.0.0.1:8080"}, EXIT_ERRORS),
                testing::HasSubstr("products.xml:26: error: \"http://127.0.0.1:8080/gallery/"));
    LayOut();
    std::filesystem::remove(shared_.Path("program/share/SoftwareUpdateVINK.xml"));
    const auto json =
        QJsonDocument::fromJson(QByteArray::fromStdString(run({"--json", root}, EXIT_WARNINGS))).array();
    EXPECT_TRUE(std::any_of(json.begin(), json.end(), [&](const QJsonValue& value) {
        return value["file"].toString().toStdString() == message && value["line"] == 4 &&
               value["severity"] == "warning" && value["code"] == "missing-translation" &&
               value["text"].toString().startsWith("there is no text for pt_BR");
    }));
    EXPECT_TRUE(CSite("http://h:80/", root).FileOf("http://h/f.xml")) << "the same port";
    EXPECT_THAT(run({"--help"}, EXIT_CLEAN), testing::HasSubstr("Exit status: 0"));
    for (const QStringList& wrong :
         {QStringList(), QStringList{"--jsn", root}, QStringList{root, root}, QStringList{root + "/nowhere"},
          QStringList{root, "--site"}, QStringList{"--preview", "k=1", "k=2", root},
          QStringList{"--site=127.0.0.1:8080", root},
          QStringList{"--site=http://127.0.0.1=" + root, root + "/site"}})
        run(wrong, EXIT_WRONG_USAGE);
}

// "rejected" stands for a refusal that no other check explains; no file here is refused like that.
TEST(CatalogCodes, EachIsExplainedToTheMakerAndTested) {
    static const QRegularExpression CODE(R"x(\{"([\w-]+)", Severity::(\w+)\})x");
    QString tested =
        "rejected not-utf8 not-utf16 unreadable cut-text no-installer unsigned-installer bad-key "
        "empty-folder not-startable not-served served-otherwise unsigned-file signed-elsewhere "
        "other-path secret-key signature-over unread-folder signature-ends unlisted unknown-file "
        "private-file older-key";
    for (const Mistake& mistake : Mistakes())
        tested += ' ' + mistake.code;
    std::map<QString, QString> explained;
    for (const QString& line : SourceText("docs/checking.md").split('\n'))
        if (const QStringList cells = line.split(" | "); cells.size() >= 4 && cells[0].startsWith("| `"))
            explained[cells[0].section('`', 1, 1)] = cells[1].toUpper();
    const QString source = SourceText("catalog/FindingCodes.h");
    for (auto codes = CODE.globalMatch(source); codes.hasNext();) {
        const QStringList code = codes.next().capturedTexts();
        EXPECT_EQ(explained[code[1]], code[2]) << code[1].toStdString();
        EXPECT_TRUE(tested.split(' ').contains(code[1])) << code[1].toStdString();
        explained.erase(code[1]);
    }
    EXPECT_TRUE(explained.empty());
}

TEST(CatalogDocument, TheExampleGivesWhatStandsBelowIt) {
    const TemporaryTree tree;
    std::string expected;
    std::string preview;
    const QStringList parts = SourceText("docs/checking.md").split("\n```");
    for (qsizetype i = 1; i < parts.size(); i += 2) {
        const std::string title = parts[i].section('\n', 0, 0).section('"', 1, 1).toStdString();
        const std::string text = parts[i].section('\n', 1).toStdString() + '\n';
        if (title == "output")
            expected = text;
        else if (title == "preview")
            preview = text;
        else
            tree.Write(title, text);
    }
    const auto run = [&](const QStringList& options, int status) {
        std::ostringstream out;
        const QStringList folder{QString::fromStdString(tree.Path("maker"))};
        EXPECT_EQ(RunCatalogCheck(QStringList{""} + options + folder, out, out), status);
        return QString::fromStdString(out.str())
            .remove(QString::fromStdString(tree.Root() + "/"))
            .toStdString();
    };
    EXPECT_EQ(run({}, EXIT_ERRORS), expected);
    EXPECT_EQ(run({"--preview"}, EXIT_CLEAN), preview);
    std::ofstream("/tmp/testmark.dat").close();
    EXPECT_THAT(run({"--preview"}, EXIT_CLEAN), testing::HasSubstr("because of /tmp/testmark.dat"));
    std::filesystem::remove("/tmp/testmark.dat");
    const auto json = QJsonDocument::fromJson(
        QByteArray::fromStdString(run({"--preview", "--json", "SoftwareUpdateVN=11.0.580.0"}, EXIT_CLEAN)));
    EXPECT_EQ(json[0]["versions"][0]["page"], "https://www.example.com/notebook/11.4");
    run({"--preview", "SoftwareUpdateVPL=1.0.0.0"}, EXIT_WRONG_USAGE);
    run({"--preview", "=1.0.0.0"}, EXIT_WRONG_USAGE);
}
