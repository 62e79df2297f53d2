// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The check of published files, and the program, before the same files: what the one finds the other does.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "CatalogTest.h"
#include "app/CSelfUpdate.h"
#include "catalog/RunCatalogCheck.h"
#include "products/CProductVersion.h"
#include "products/DescriptionFormat.h"
#include "support/Minisign.h"

namespace {

const std::string LIST = "site/products.xml";
const std::string INSTALLED_LIST = "program/share/products.xml";
const std::string LOCAL = "program/share/SoftwareUpdateVN.xml";
const std::string REMOTE = "site/updates/notebook.xml";
const std::string PLANNER = "site/updates/planner.xml";
const std::string NOTICE = "program/share/NoticeSummerCourses.xml";
const std::string MESSAGE = "site/notices/courses.xml";
const std::string PUBLISHED = "site/gallery/gallery_categories.xml";
const std::string INSTALLED = "program/gallery/Uninstall/updateinfo.xml";
const std::string TABLE = "program/Languages/languages.xml";
const std::string GERMAN = "program/Languages/de/VARDOProductUpdate.strings";

const char* const NO_NOTEBOOK = "-VARDO Notebook|11.0.580.0|";
const char* const COURSES = "Free courses";
const char* const NO_COURSES = "-Free courses";

// A mistake, what the check says of it, and a text that is in some row of the window then; with a "-" before
// it, in none.
struct Mistake {
    const char* situation;
    std::string file;
    QString what;
    QString with;
    FindingCode code;
    int line;
    const char* row;
};

QString Range(const char* ends, const char* version) {
    return QString("<Range %1><Product UpdateVersion='%2'/></Range><Range VersionFrom=\"2.0.0.0\"")
        .arg(ends, version);
}

const QString FIRST_RANGE = "<Range VersionFrom=\"2.0.0.0\"";

const Mistake MISTAKES[] = {
    {"an element in lower case", LIST, "<Product Name=\"VARDO Ink\"", "<product Name=\"VARDO Ink\"",
     Code::UNKNOWN_PRODUCT, 16, "-VARDO Ink"},
    {"an attribute in another case", LIST, "BaseXml=\"SoftwareUpdateVINK\"", "BaseXML=\"SoftwareUpdateVINK\"",
     Code::UNKNOWN_ATTRIBUTE, 16, "-VARDO Ink"},
    {"the name is missing", LIST, "Name=\"VARDO Ink\"", "Name=\"\"", Code::MISSING_ATTRIBUTE, 16,
     "-VARDO Ink"},
    {"a list without a version", LIST, "Version=\"1.3.0.0\"", "", Code::INVALID_VERSION, 3,
     "-VARDO Timeline"},
    {"a list that names no other", INSTALLED_LIST, "Url=", "URL=", Code::NO_REFRESH, 3, "-VARDO Timeline"},
    {"a list at an https address", INSTALLED_LIST, "Url=\"http:", "Url=\"https:", Code::NOT_HTTP, 3,
     "-VARDO Timeline"},
    {"a list that holds nothing", LIST, "",
     "<Products Version='2.0.0.0' Url='http://127.0.0.1:8080/products.xml'/>", Code::EMPTY_LIST, 1,
     "-VARDO Timeline"},
    {"a disabler of no product", LIST, "uid=\"SoftwareUpdateVBS\"", "uid=\"VBS\"", Code::NO_EFFECT, 13,
     "VARDO Poll|1.4.0.0|2.0.0.0|Update"},
    {"a product that disables itself", LIST, "uid=\"SoftwareUpdateVBS\"", "uid=\"SoftwareUpdateVPL\"",
     Code::NO_EFFECT, 13, "VARDO Poll|1.4.0.0|2.0.0.0|Update"},
    {"a range with a lower end alone", LIST, " versionTo=\"9.9.9.9\"", "", Code::OPEN_RANGE, 13,
     "VARDO Poll|1.4.0.0|2.0.0.0|Update"},
    {"a range without ends", LIST, "versionFrom=\"9.0.0.0\" versionTo=\"9.9.9.9\"", "", Code::EMPTY_RANGE, 13,
     "VARDO Poll|1.4.0.0|2.0.0.0|Update"},
    {"exchanged ends", LIST, "versionFrom=\"9.0.0.0\" versionTo=\"9.9.9.9\"",
     "versionTo=\"9.0.0.0\" versionFrom=\"9.9.9.9\"", Code::SWAPPED_RANGE, 13,
     "VARDO Poll|1.4.0.0|1.4.0.0|-"},
    {"disablers in two groups", LIST, "<DisableUpdatesIfInstalled>",
     "<DisableUpdatesIfInstalled/><DisableUpdatesIfInstalled>", Code::REPEATED_ELEMENT, 12,
     "VARDO Poll|1.4.0.0|2.0.0.0|Update"},
    {"two products with one base name", LIST, "SoftwareUpdateVINK", "SoftwareUpdateVN", Code::DUPLICATE_KEY,
     16, "VARDO Ink|11.0.580.0"},
    {"a base name that begins with another", LIST, "SoftwareUpdateVINK", "SoftwareUpdateVN10",
     Code::AMBIGUOUS_NAME, 4, "VARDO Ink|10.6.141.0"},
    {"a product without a page", LIST,
     "\n             DefaultUrl=\"http://127.0.0.1:8080/pages/microscope-home.html\"", "", Code::NO_PAGE, 22,
     "-VARDO Microscope|4.4.0.0|4.5.0.0|Update|http"},
    {"a page that is no address", LIST, "http://127.0.0.1:8080/pages/microscope-home.html", "mailto:a@h.com",
     Code::PAGE_ADDRESS, 23, "VARDO Microscope|4.4.0.0|4.5.0.0|Update|mailto:"},

    {"no installed version", LOCAL, "CurrentVersion=", "Version=", Code::MISSING_ATTRIBUTE, 3, NO_NOTEBOOK},
    {"no product", LOCAL, "<Product", "<TestProduct", Code::MISSING_ELEMENT, 2, NO_NOTEBOOK},
    {"two files of one version", "program/share/SoftwareUpdateVN106.xml", "10.6.141.0", "10.2.1.0",
     Code::SAME_VERSION, 1, "-|10.6.141.0|"},
    {"an installed version of three parts", LOCAL, "11.0.580.0", "11.2.0", Code::INVALID_VERSION, 3,
     "VARDO Notebook|11.2.0|"},
    {"a version that is not read to its end", LOCAL, "11.0.580.0", "11.2.0.0-beta", Code::MISREAD_VERSION, 3,
     "VARDO Notebook|11.2.0.0|11.2.0.0|Current"},
    {"a version in the old form", LOCAL, "11.0.580.0", "10203040", Code::VERSION_FORM, 3,
     "VARDO Notebook|1.2.30.40|"},
    {"the name of a file that is not there", LOCAL, "notebook.xml", "book.xml", Code::MISSING_FILE, 3,
     "VARDO Notebook|11.0.580.0||"},
    {"an address without http", LOCAL, "http://", "", Code::NOT_HTTP, 3, "VARDO Notebook|11.0.580.0||"},
    {"an address with a query", LOCAL, "notebook.xml", "notebook.xml?v=2", Code::NOT_SENT, 3,
     "VARDO Notebook|11.0.580.0||"},
    {"an address of another site", LOCAL, "127.0.0.1", "example.com", Code::ELSEWHERE, 3,
     "VARDO Notebook|11.0.580.0||"},

    {"not exactly Server", REMOTE, "\"Server\"", "\"server\"", Code::NOT_SERVER, 2,
     "VARDO Notebook|11.0.580.0||"},
    {"an end tag is missing", REMOTE, "</SoftwareUpdate>", "", Code::MALFORMED, 7,
     "VARDO Notebook|11.0.580.0||"},
    {"no product for the public", REMOTE, "<Product", "<TestProduct", Code::MISSING_ELEMENT, 2,
     "VARDO Notebook|11.0.580.0||"},
    {"an offer of a version of two parts", REMOTE, "11.2.0.0", "11.2", Code::INVALID_VERSION, 3,
     "VARDO Notebook|11.0.580.0|11.2|Current"},
    {"an offer without a version", REMOTE, "UpdateVersion=", "Version=", Code::INVALID_VERSION, 3,
     "VARDO Notebook|11.0.580.0||Current"},
    {"an ampersand in an address", REMOTE, "notebook.html", "n.html?a&b", Code::LONE_AMPERSAND, 5,
     "/n.html?ab"},
    {"two ranges with one lower end", PLANNER, FIRST_RANGE,
     Range("VersionFrom='2.0.0.0' VersionTo='2.9.0.0'", "2.5.0.0"), Code::SAME_LOWER_END, 8,
     "VARDO Lesson Planner|2.3.0.0|2.5.0.0|Update"},
    {"a range within a lower one", PLANNER, FIRST_RANGE,
     Range("VersionFrom='1.0.0.0' VersionTo='3.0.0.0'", "2.7.0.0"), Code::UNREACHABLE_OFFER, 8,
     "VARDO Lesson Planner|2.3.0.0|2.7.0.0|Update"},
    {"a range that overlaps with a lower one", PLANNER, "</Compatibility>",
     "<Range VersionFrom='1.0.0.0' VersionTo='2.4.0.0'><Product UpdateVersion='2.6.0.0'/></Range>"
     "</Compatibility>",
     Code::OVERLAP, 8, "VARDO Lesson Planner|2.3.0.0|2.6.0.0|Update"},
    {"ranges in a second group", PLANNER, "<Compatibility>", "<Compatibility/><Compatibility>",
     Code::REPEATED_ELEMENT, 7, "VARDO Lesson Planner|2.3.0.0|4.0.0.0|Update"},
    {"a range without an offer", PLANNER, "VersionTo=\"2.9.9.9\">",
     "VersionTo=\"2.9.9.9\"></Range><Range VersionFrom=\"3.0.0.0\" VersionTo=\"3.0.0.1\">",
     Code::RANGE_WITHOUT_OFFER, 8, "VARDO Lesson Planner|2.3.0.0|4.0.0.0|Update"},
    {"an offer below its range", PLANNER, "2.9.1.0", "1.9.1.0", Code::NEVER_AN_UPDATE, 9,
     "VARDO Lesson Planner|2.3.0.0|1.9.1.0|Current"},
    {"an end tag of another name", PLANNER, "<Compatibility>", "<Compatible>", Code::MALFORMED, 13,
     "VARDO Lesson Planner|2.3.0.0||"},
    {"ranges in another case", PLANNER, FIRST_RANGE, "<Ranges/>" + Range("VersionTo='1.0.0.0'", "1.1.0.0"),
     Code::UNKNOWN_ELEMENT, 8, "VARDO Lesson Planner|2.3.0.0|2.9.1.0|Update"},

    {"BaseXml for BaseXML", LIST, "BaseXML=", "BaseXml=", Code::MISSING_ATTRIBUTE, 27, NO_COURSES},
    {"a notification without a description", LIST, "NoticeSummerCourses", "NoticeCourses", Code::MISSING_FILE,
     27, NO_COURSES},
    {"a description with another root", NOTICE, "<Notification", "<Notice", Code::WRONG_ROOT, 2, NO_COURSES},
    {"a description without a file", NOTICE, "File=", "Files=", Code::MISSING_ATTRIBUTE, 2, NO_COURSES},
    {"a day that does not exist", MESSAGE, "20991231", "20991340", Code::BAD_DATE, 3, NO_COURSES},
    {"it ends before it begins", MESSAGE, "20991231", "20260102", Code::NEVER_SHOWN, 3, NO_COURSES},
    {"it is over", MESSAGE, "20991231", "20260201", Code::EXPIRED, 3, NO_COURSES},
    {"texts in a second group", MESSAGE, "<Text>", "<Text/><Text>", Code::MISSING_ELEMENT, 3, NO_COURSES},
    {"no English text", MESSAGE, "<en value", "<pl value", Code::NO_ENGLISH, 4, NO_COURSES},
    {"two texts for English", MESSAGE, "<de value", "<en value", Code::DUPLICATE_KEY, 6, NO_COURSES},
    {"no text for some languages", MESSAGE, "<de value", "<de_AT value", Code::MISSING_TRANSLATION, 4,
     COURSES},
    {"a text for no language", MESSAGE, "<de value", "<deutsch value", Code::UNKNOWN_LANGUAGE, 6, COURSES},
    {"an empty text", MESSAGE, "value=\"Free", "text=\"Free", Code::EMPTY_TEXT, 5, NO_COURSES},

    {"no categories", PUBLISHED, "<categories>", "<category/><categories>", Code::UNKNOWN_ELEMENT, 3,
     "VARDO Gallery Pictures|"},
    {"no group of categories", PUBLISHED, "",
     "<gallery>\n<category id='maps' version='2027-01-01'/>\n</gallery>", Code::MISSING_ELEMENT, 1,
     "|Update"},
    {"versions that are no dates", PUBLISHED, "2026-06-15", "June", Code::NOT_A_DATE, 4, "|June|Update"},
    {"no category that is installed", PUBLISHED, "",
     "<x><categories><category id='plants' version='2027-01-01'/></categories></x>", Code::NO_COMMON_CATEGORY,
     1, "-2027"},
    {"a category without an id", INSTALLED, "id=\"animals\"", "name=\"animals\"", Code::MISSING_ATTRIBUTE, 3,
     "|Update"},
    {"a category twice", INSTALLED, "id=\"maps\"", "id=\"animals\"", Code::DUPLICATE_KEY, 4,
     "VARDO Gallery Pictures|"},
    {"no category with an id", INSTALLED, "", "<x><category/></x>", Code::MISSING_ELEMENT, 1,
     "-VARDO Gallery Pictures"},
};

QString Document() {
    return QString::fromStdString(ReadWholeFile(VARDO_SOURCE_DIR "/docs/publishing.md"));
}

// A mistake in the language table or the German texts; then, what the program shows for "Close", and whether
// it takes Hebrew to be written from right to left ("<") or from left to right (">").
struct TextMistake {
    const char* situation;
    std::string file;
    QString what;
    QString with;
    FindingCode code;
    int line;
    const char* shown;
};

const QString TEXT = "\"Close\" = \"Schließen\";";

const TextMistake TEXT_MISTAKES[] = {
    {"a language that only another table finds by its ID", TABLE, "ID=\"0407\"", "ID=\"407\"",
     Code::BAD_LANGUAGE_ID, 10, "Schließen|<"},
    {"a code that leads elsewhere", TABLE, "Code=\"de\"", "Code=\"../de\"", Code::BAD_LANGUAGE_CODE, 10,
     "Close|<"},
    {"a language without texts", TABLE, "Code=\"de\"", "Code=\"de_DE\"", Code::NO_TEXTS, 10, "Close|<"},
    {"texts of no language", TABLE, "Code=\"de\"", "Code=\"de_DE\"", Code::UNKNOWN_LANGUAGE, 0, "Close|<"},
    {"two languages of one ID", TABLE, "ID=\"040C\"", "ID=\"0407\"", Code::DUPLICATE_KEY, 11, "Schließen|<"},
    {"a direction in words", TABLE, "RightToLeft=\"1\"/>\n</", "RightToLeft=\"yes\"/>\n</", Code::BAD_VALUE,
     18, "Schließen|>"},

    {"the key comes twice", GERMAN, TEXT, TEXT + "\n\"Close\" = \"Zu\";", Code::DUPLICATE_KEY, 21, "Zu|<"},
    {"the key is missing", GERMAN, TEXT, "", Code::MISSING_TRANSLATION, 1, "Close|<"},
    {"the text is empty", GERMAN, TEXT, "\"Close\" = \"\";", Code::EMPTY_TEXT, 20, "Close|<"},
    {"the key is empty", GERMAN, TEXT, "\"\" = \"Schließen\";", Code::EMPTY_KEY, 20, "Close|<"},
    {"a text is missing", GERMAN, TEXT, "\"Help\" =;\n" + TEXT, Code::OUT_OF_STEP, 20, "Close|<"},
    {"an escape that means nothing", GERMAN, "Schließen", "Schlie\\sen", Code::ODD_ESCAPE, 20, "Schliesen|<"},
    {"a text that is too long", GERMAN, TEXT, TEXT + "\"Close\" = \"" + QString(10300, 'x') + "\";",
     Code::CUT_TEXT, 20, "xxxx"},
    {"quotes that do not end", GERMAN, TEXT, "/* \" */ x = y; \"" + TEXT.mid(8), Code::UNCLOSED, 0,
     "Close|<"},
    {"a comment that does not end", GERMAN, TEXT, "/* " + TEXT, Code::UNCLOSED, 20, "Close|<"},
    {"a last key without a text", GERMAN, "", "x = y;\nClose", Code::LOOSE_KEY, 2, "Close|<"},
};

}  // namespace

TEST_F(CatalogTest, TheSamplesHaveNoErrorButTheMissingFile) {
    const CFindings findings = Check();
    EXPECT_EQ(findings.Count(Severity::ERROR), 1) << findings.ToText().toStdString();
    EXPECT_EQ(Count(findings, Code::MISSING_FILE, "program/share/SoftwareUpdateVINK.xml", 3), 1);
    EXPECT_THAT(Rows(), testing::IsSupersetOf({testing::HasSubstr("VARDO Ink|3.0.12.0||"),
                                               testing::HasSubstr(COURSES),
                                               testing::HasSubstr("VARDO Timeline|1.2.3.4|1.2.3.4")}));
}

TEST_F(CatalogTest, WhatIsFoundIsWhatTheProgramDoes) {
    const CFindings good = Check();
    for (const Mistake& mistake : MISTAKES) {
        LayOut();
        Alter(mistake.file, mistake.what, mistake.with);
        const CFindings findings = CheckBut(good);
        EXPECT_GT(Count(findings, mistake.code, mistake.file, mistake.line), 0)
            << mistake.situation << '\n'
            << findings.ToText().toStdString();
        const auto rows = Rows();
        const std::string row = mistake.row;
        if (row.starts_with('-'))
            EXPECT_THAT(rows, testing::Not(testing::Contains(testing::HasSubstr(row.substr(1)))))
                << mistake.situation;
        else
            EXPECT_THAT(rows, testing::Contains(testing::HasSubstr(row))) << mistake.situation;
    }
}

TEST_F(CatalogTest, WhatIsFoundInTextsIsWhatTheProgramShows) {
    const std::string languages = shared_.Path("program/Languages/");
    for (const TextMistake& mistake : TEXT_MISTAKES) {
        LayOut();
        EXPECT_EQ(InGerman("Close", languages), "Schließen|<");
        Alter(mistake.file, mistake.what, mistake.with);
        const CFindings findings = Check();
        const std::string file = mistake.line == 0 ? GERMAN : mistake.file;
        EXPECT_GT(Count(findings, mistake.code, file, mistake.line), 0) << mistake.situation << '\n'
                                                                        << findings.ToText().toStdString();
        EXPECT_THAT(InGerman("Close", languages), testing::StartsWith(mistake.shown)) << mistake.situation;
    }
    const std::string good = ReadWholeFile(shared_.Path("program/Languages/fr/VARDOProductUpdate.strings"));
    for (const auto& [bytes, code] :
         {std::pair(std::string("\"Close\" = \"Zu\";"), Code::NOT_UTF16),
          std::pair(good + "x", Code::NOT_UTF16), std::pair(std::string(), Code::UNREADABLE)}) {
        shared_.Write(GERMAN, bytes);
        EXPECT_EQ(Count(Check(), code, GERMAN, 1), 1);
    }
    EXPECT_EQ(InGerman("Close", languages), "Close|<");
}

TEST_F(CatalogTest, LinesAreThoseOfTheFileWhateverItsLineEndsAndItsMark) {
    Alter(PLANNER, FIRST_RANGE, Range("VersionFrom='1.0.0.0' VersionTo='3.0.0.0'", "2.7.0.0"));
    Alter(MESSAGE, "20991231", "20991340");
    const auto lines = [this] {
        std::vector<std::string> found;
        for (const Finding& finding : Check().Sorted())
            found.push_back(finding.file.toStdString() + std::to_string(finding.line) + finding.code.name);
        return found;
    };
    const auto before = lines();
    for (const std::string& file : {LIST, LOCAL, PLANNER, MESSAGE, TABLE})
        shared_.Write(file, "\xEF\xBB\xBF" + QString::fromStdString(ReadWholeFile(shared_.Path(file)))
                                                 .replace("\n", "\r\n")
                                                 .toStdString());
    EXPECT_EQ(lines(), before);
}

TEST_F(CatalogTest, EncodingsAreThoseOfEachReader) {
    // A lead byte of UTF-8 takes the quote behind it along, but not in a description that declares single
    // bytes.
    const std::string head = "<?xml version='1.0' encoding='ISO-8859-1'?>";
    shared_.Write(REMOTE, head +
                              "<x Location='Server'><Product UpdateVersion='11.5.0.0' "
                              "UpdateInstallFile='\xC3' UpdateWebPage='http://h/'/></x>");
    EXPECT_EQ(Count(Check(), Code::NOT_UTF8, REMOTE, 1), 1);
    EXPECT_THAT(Rows(), testing::Contains(testing::HasSubstr("|11.5.0.0|Update|http://h/")));
    shared_.Write(LIST, head + "<x Version='9.0.0.0'><Product Name='\xC3' BaseXml='SoftwareUpdateVN'/></x>");
    EXPECT_EQ(Count(Check(), Code::MALFORMED, LIST, 1), 1);
    EXPECT_THAT(Rows(), testing::Contains(testing::HasSubstr("VARDO Ink")));
}

TEST_F(CatalogTest, AProgramThatIsOfferedNeedsItsInstaller) {
    const std::string offer = "site/program/VardoProductUpdate.xml";
    const std::string local = "program/share/VardoProductUpdate.xml";
    EXPECT_EQ(Count(Check(), Code::NO_INSTALLER, offer, 0), 0) << "nothing newer";
    Alter(offer, "3.1.555.0", "3.2.0.0");
    EXPECT_EQ(Count(Check(), Code::NO_INSTALLER, offer, 3), 1) << "no such file";
    shared_.Write("site/program/installer", "#!/bin/sh\n");
    EXPECT_EQ(Count(Check(), Code::NO_INSTALLER, offer, 0), 0);
    Alter(offer, "UpdateInstallFile=", "InstallFile=");
    EXPECT_EQ(Count(Check(), Code::NO_INSTALLER, offer, 3), 1) << "no name";
    Alter(local, "CurrentVersion=", "NoUpdates=\"True\" CurrentVersion=");
    EXPECT_EQ(Count(Check(), Code::BAD_VALUE, local, 3), 1);
    CProductVersion program{CVardoFilePath(shared_.Path(local).c_str())};
    EXPECT_TRUE(program.LoadLocal() && !program.IsNoUpdates());
    Alter(local, "True", "true");
    EXPECT_TRUE(program.LoadLocal() && program.IsNoUpdates());
}

TEST_F(CatalogTest, AProgramWithTheMakersKeyNeedsASignedInstaller) {
    const std::string offer = "site/program/VardoProductUpdate.xml";
    const std::string contents = "#!/bin/sh\n";
    const std::string comment = "file:installer version:3.2.0.0";
    const Minisign maker;
    Alter(offer, "3.1.555.0", "3.2.0.0");
    shared_.Write("site/program/installer", contents);
    const CFindings withoutKey = Check();
    shared_.Write("program/share/VardoProductUpdate.pub", maker.Key());
    // The last is what is said of it; empty when nothing is, and the program would start the installer.
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"no signature", "", "there is no \""},
        {"another maker's", Minisign().Sign(contents, comment), "installer.minisig\" is no signature with"},
        {"an older version's", maker.Sign(contents, "file:installer version:3.1.0.0"),
         "for \"file:installer version:3.2.0.0\""},
        {"altered since", maker.Sign(contents + "x", comment), "installer\" is not what was signed with"},
        {"the very file", maker.Sign(contents, comment), ""},
    };
    for (const auto& [situation, signature, text] : cases) {
        SCOPED_TRACE(situation);
        if (!signature.empty())
            shared_.Write("site/program/installer.minisig", signature);
        const bool isGood = *text == '\0';
        const CFindings findings = CheckBut(withoutKey);
        EXPECT_EQ(findings.Sorted().size(), isGood ? 0 : 1) << findings.ToText().toStdString();
        EXPECT_EQ(Count(findings, Code::UNSIGNED_INSTALLER, offer, 3), isGood ? 0 : 1);
        EXPECT_THAT(findings.ToText().toStdString(), testing::HasSubstr(text));
        ServeSite();
        CSelfUpdate update(DescriptionFormat::OWN_FILE, *environment_);
        update.SetDownloader(downloader_);
        EXPECT_TRUE(update.LoadLocal() && update.LoadRemote() && update.IsUpdateAvailable());
        EXPECT_EQ(update.DownloadInstaller(), isGood);
        if (update.IsDownloaded())
            std::filesystem::remove_all(
                std::filesystem::path(update.GetInstallerPath().ToQString().toStdString()).parent_path());
    }
}

TEST_F(CatalogTest, ADescriptionOfNoListedProductIsNotRead) {
    shared_.Write("site/CAPITALS.XML", "<a");
    EXPECT_EQ(Count(Check(), Code::MALFORMED, "site/CAPITALS.XML", 0), 1);
    Alter(LIST, "SoftwareUpdateVTL", "SoftwareUpdateVTX");
    EXPECT_EQ(Count(Check(), Code::UNLISTED, "program/share/SoftwareUpdateVTL.xml", 1), 1);
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
    EXPECT_EQ(run({root + "/site/"}, EXIT_CLEAN),
              shared_.Path("site/pages/page.html:1: note: the program reads no such file [unknown-file]\n"));
    run({"--site", "http://127.0.0.1:8080/other", root + "/site"}, EXIT_CLEAN);
    std::filesystem::remove(shared_.Path(PUBLISHED));
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
    EXPECT_THAT(run({"--help"}, EXIT_CLEAN), testing::HasSubstr("Exit status: 0"));
    for (const QStringList& wrong :
         {QStringList(), QStringList{"--jsn", root}, QStringList{root, root}, QStringList{root + "/nowhere"},
          QStringList{root, "--site"}, QStringList{"--site=127.0.0.1:8080", root}})
        run(wrong, EXIT_WRONG_USAGE);
}

// "rejected" is for a file that a reader refuses for a reason that nobody thought of: there is none here.
TEST(CatalogCodes, EachIsExplainedToTheMakerAndTested) {
    const auto severity = [](const FindingCode& code) {
        return code.severity == Severity::ERROR     ? "error"
               : code.severity == Severity::WARNING ? "warning"
                                                    : "note";
    };
    std::map<std::string, std::string> tested{{"rejected", "error"}};
    for (const Mistake& mistake : MISTAKES)
        tested[mistake.code.name] = severity(mistake.code);
    for (const TextMistake& mistake : TEXT_MISTAKES)
        tested[mistake.code.name] = severity(mistake.code);
    for (const FindingCode& code : {Code::NOT_UTF8, Code::NOT_UTF16, Code::UNREADABLE, Code::NO_INSTALLER,
                                    Code::UNSIGNED_INSTALLER, Code::UNLISTED, Code::UNKNOWN_FILE})
        tested[code.name] = severity(code);
    std::map<std::string, std::string> explained;
    for (const QString& line : Document().split('\n'))
        if (const QStringList cells = line.split(" | "); cells.size() >= 4 && cells[0].startsWith("| `"))
            explained[cells[0].section('`', 1, 1).toStdString()] = cells[1].toStdString();
    EXPECT_EQ(explained, tested);
}

TEST(CatalogDocument, TheExampleGivesWhatStandsBelowIt) {
    const TemporaryTree tree;
    std::string expected;
    const QStringList parts = Document().split("\n```");
    for (qsizetype i = 1; i < parts.size(); i += 2) {
        const std::string title = parts[i].section('\n', 0, 0).section('"', 1, 1).toStdString();
        const std::string text = parts[i].section('\n', 1).toStdString() + '\n';
        if (title == "output")
            expected = text;
        else
            tree.Write(title, text);
    }
    std::ostringstream out;
    EXPECT_EQ(RunCatalogCheck({"", QString::fromStdString(tree.Path("maker"))}, out, out), EXIT_ERRORS);
    EXPECT_EQ(
        QString::fromStdString(out.str()).remove(QString::fromStdString(tree.Root() + "/")).toStdString(),
        expected);
}
