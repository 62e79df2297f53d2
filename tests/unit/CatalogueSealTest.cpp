// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Which XML files the program accepts with the maker's key beside it. The minisign tool signs them.
#include <gmock/gmock.h>
#include <QRegularExpression>
#include <filesystem>
#include <sstream>

#include <unistd.h>

#include "CatalogTest.h"
#include "publish/FolderProgram.h"
#include "signing/CCatalogueSeal.h"
#include "support/Minisign.h"
#include "support/ScopedEnvironment.h"

namespace {

using enum CCatalogueSeal::Judgement;

const std::string CONTENT =
    "<?xml version='1.0'?>\r\n<u Location='Server'><Product UpdateVersion='99.0.0.0'/></u>\n";
const std::string COMMENT = "path:/a%20b/u.xml until:20270131";

const Minisign& Maker() {
    static const Minisign maker;
    return maker;
}

std::string Signed(const std::string& content, const std::string& comment) {
    return content + "<!--minisign\n" + Maker().Sign(content, comment) + "-->\n";
}

// The text with the first occurrence of a part replaced by another.
std::string But(std::string text, const std::string& what, const std::string& with) {
    return text.replace(text.find(what), what.size(), with);
}

struct Case {
    const char* situation;
    std::string file = Signed(CONTENT, COMMENT);
    CCatalogueSeal::Judgement judgement = UNSIGNED;
    QDate today{2027, 1, 31};
    const char* address = "http://mirror:8080/a b/u.xml";
    std::string key = Maker().Key();
};

TEST(CatalogueSeal, BelievesWhatTheMakerSignedForThisAddressAndThisDay) {
    const Minisign other;
    const std::string good = Signed(CONTENT, COMMENT);
    const Case cases[] = {
        {.situation = "the signed file", .judgement = GOOD},
        {.situation = "on the day of grace", .judgement = GOOD, .today{2027, 2, 1}},
        {.situation = "two days late", .judgement = EXPIRED, .today{2027, 2, 2}},
        {.situation = "without a date", .judgement = GOOD, .today{}},
        {.situation = "another path", .judgement = WRONG_ADDRESS, .address = "http://mirror:8080/a/u.xml"},
        {.situation = "white space after it", .file = good + " \r\n\t", .judgement = GOOD},
        {.situation = "another maker's key", .key = other.Key()},
        {.situation = "a key and something else", .key = Maker().Key() + "\n"},
        {.situation = "a byte changed", .file = But(good, "Server", "server")},
        {.situation = "a comment after it", .file = good + "<!-- -->"},
        {.situation = "an unsigned element in the comment",
         .file = But(good, "comment: ", "comment: --><u/><!--")},
        {.situation = "Windows line ends in the comment", .file = But(good, "\ntrusted", "\r\ntrusted")},
        {.situation = "two paths", .file = Signed(CONTENT, COMMENT + " path:/x")},
        {.situation = "no path", .file = Signed(CONTENT, "until:20270131")},
        {.situation = "no last day", .file = Signed(CONTENT, "path:/a%20b/u.xml")},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.situation);
        const TemporaryTree share;
        const CVardoDirectoryPath folder(share.Root().c_str());
        EXPECT_EQ(CCatalogueSeal(folder).Judge(CONTENT, "", row.today), GOOD) << "without a key";
        share.Write("VardoCatalogue.pub", row.key);
        EXPECT_EQ(CCatalogueSeal(folder).Judge(row.file, row.address, row.today), row.judgement);
    }
}

class SignedSite : public CatalogTest {
protected:
    // Signs a folder for so many days with the maker's secret key; returns the exit status.
    int Sign(const char* days, const char* folder = "site") {
        std::ostringstream out;
        return RunCatalogSign({"VARDOCatalogSign", "--key", QString::fromStdString(Maker().SecretKeyFile()),
                               "--days", days, QString::fromStdString(shared_.Path(folder))},
                              out, out);
    }
    // Releases the whole folder; returns the lines that this prints.
    QStringList Release(QStringList options, int status) {
        std::ostringstream out;
        options.prepend("VARDOCatalogRelease");
        EXPECT_EQ(RunCatalogRelease(options << QString::fromStdString(shared_.Root()), out, out), status)
            << out.str();
        return QString::fromStdString(out.str())
            .remove(QString::fromStdString(shared_.Root() + "/"))
            .split('\n');
    }
    void InstallKey() { shared_.Write("program/share/VardoCatalogue.pub", Maker().Key()); }
};

TEST_F(SignedSite, IsBelievedFileByFile) {
    EXPECT_EQ(Sign("90", ""), EXIT_ERRORS) << "the samples have a mistake";
    const QStringList withoutKey = Check();
    const auto rows = Rows();
    LayOut();
    InstallKey();
    EXPECT_THAT(Rows(), testing::Each(testing::Not(testing::HasSubstr("|Update|")))) << "nothing is signed";
    for (const char* file : {"products.xml", "updates/notebook.xml", "notices/courses.xml",
                             "program/VardoProductUpdate.xml", "gallery/gallery_categories.xml"})
        EXPECT_EQ(Count(Check(withoutKey), QString("site/%1:1: error").arg(file), "unsigned-file"), 1)
            << file;

    // The second signature replaces the first.
    const std::string first = shared_.Path("site/products.xml");
    std::filesystem::permissions(first, std::filesystem::perms{0646});
    EXPECT_EQ(Sign("13") + Sign("14"), 0);
    EXPECT_EQ(std::filesystem::status(first).permissions(), std::filesystem::perms{0646});
    EXPECT_EQ(Check(withoutKey), QStringList());
    EXPECT_EQ(Rows(), rows);
    EXPECT_EQ(Sign("13"), 0);
    Alter("site/products.xml", "<Product ", "<!--minisign key--><Product ");
    EXPECT_EQ(Sign("13"), EXIT_ERRORS);
    EXPECT_THAT(ReadWholeFile(shared_.Path("site/products.xml")), testing::HasSubstr("</Products>"));
    Alter("site/products.xml", "<!--minisign key-->", "");
    EXPECT_EQ(Count(Check(), "site/products.xml:1: warning", "signature-ends"), 1);
    shared_.Write("site/updates/notebook.xml", Signed(CONTENT, "path:/p.xml until:20200131"));
    for (const char* code : {"signature-over", "signed-elsewhere"})
        EXPECT_EQ(Count(Check(), "site/updates/notebook.xml:1: error", code), 1);
    std::ostringstream preview;
    RunCatalogCheck({"", "--preview", QString::fromStdString(shared_.Root())}, preview, preview);
    EXPECT_THAT(preview.str(), testing::HasSubstr("refused as it is now: it is signed for another address"));
    Alter("program/share/SoftwareUpdateVLP.xml", "8080/updates", "8080/./updates");
    EXPECT_EQ(Count(Check(), "program/share/SoftwareUpdateVLP.xml:", "other-path"), 1) << "of an address";
    std::filesystem::remove(shared_.Path("program/share/SoftwareUpdateVINK.xml"));
    EXPECT_EQ(Sign("13", ""), EXIT_ERRORS) << "which no signature mends";
    Alter("site/products.xml", "/products.xml\"", "/new/products.xml\"");
    EXPECT_EQ(Count(Check(), "site/products.xml:", "other-path"), 1) << "of its Url";
    for (const auto& [path, told] : {std::pair("products", "The signature of the list has expired"),
                                     {"p", "The list is signed for another address"}}) {
        shared_.Write("site/products.xml",
                      Signed("<P/>\n", QString("path:/%1.xml until:20200131").arg(path).toStdString()));
        Rows();
        EXPECT_EQ(told_.value(0), QString("127.0.0.1: ") + told);
    }
    EXPECT_TRUE(told_.contains("127.0.0.1: The file is signed for another address"));
    shared_.Write("program/share/VardoCatalogue.pub", "no key");
    EXPECT_EQ(Count(Check(), "program/share/VardoCatalogue.pub:1: error", "bad-key"), 1);

    // The program does not show what an altered file says, and tells the reason.
    for (const char* file :
         {"products.xml", "updates/planner.xml", "notices/courses.xml", "gallery/gallery_categories.xml"}) {
        SCOPED_TRACE(file);
        LayOut();
        InstallKey();
        EXPECT_EQ(Sign("90"), 0);
        const std::string path = std::string("site/") + file;
        shared_.Write(path, But(ReadWholeFile(shared_.Path(path)), "<", " <"));
        EXPECT_NE(Rows(), rows);
        const QString kind = path.ends_with("products.xml") ? "list" : "file";
        EXPECT_EQ(told_, QStringList{"127.0.0.1: The " + kind + " is not signed by the maker"});
    }
}

TEST_F(SignedSite, IsReleasedInstallerFirstAndListLast) {
    const QString key = QString::fromStdString(Maker().SecretKeyFile());
    const std::string offer = "site/program/VardoProductUpdate.xml";
    std::filesystem::remove(shared_.Path("program/share/SoftwareUpdateVINK.xml"));
    for (const char* file : {"installer", "old", "beta"})
        shared_.Write(std::string("site/program/") + file, "#!/bin/sh\n");
    const std::string beta =
        But(ReadWholeFile(shared_.Path("program/share/VardoProductUpdate.xml")), "\"Vardo", "\"Beta");
    shared_.Write("trial/share/VardoProductUpdate.xml", beta);
    shared_.Write("z/share/VardoProductUpdate.xml", But(beta, "127.0.0.1", "127.0.0.2"));
    shared_.Write("site/program/BetaProductUpdate.xml",
                  But(ReadWholeFile(shared_.Path(offer)), "\"installer\"", "\"beta\""));
    const std::string old = Minisign().Sign("#!/bin/sh\n", "file:old version:3.0.0.0");
    shared_.Write("site/program/old.minisig", old);
    Alter(offer, "\"installer\"", "\"installer?v=1\"");
    const auto fails = [&] { return Release({"--installer-key", key}, EXIT_ERRORS).join(' ').toStdString(); };
    shared_.Write("site/program/installer.minisig/x", "");
    EXPECT_THAT(fails(), testing::HasSubstr("installer.minisig\" cannot be written"));
    std::filesystem::remove_all(shared_.Path("site/program/installer.minisig"));
    std::ofstream("/tmp/testmark.dat").close();
    EXPECT_THAT(fails(), testing::HasSubstr("nothing was signed: remove /tmp/testmark.dat"));
    EXPECT_FALSE(chown("/tmp/testmark.dat", 4711, 4711) == 0 && CUpdateXmlReader::IsTestMode());
    std::filesystem::remove("/tmp/testmark.dat");
    {
        const ScopedEnvironment path("PATH", "/nowhere");
        EXPECT_THAT(fails(), testing::HasSubstr("install the package minisign"));
    }
    shared_.Write("site/program/in staller", "#!/bin/sh\n");
    Alter(offer, "\"installer?v=1\"", "\"in staller\"");
    EXPECT_THAT(fails(), testing::HasSubstr("whose name holds a blank"));
    Alter(offer, "\"in staller\"", "\"installer?v=1\"");
    Release({"--installer-key", key}, EXIT_CLEAN);
    EXPECT_EQ(ReadWholeFile(shared_.Path("site/program/installer")), "#!/bin/sh\n");
    Alter(offer, "?v=1", "");
    const std::string range =
        "><Compatibility><Range VersionTo='2.0.0.0'><Product UpdateVersion='3.0.0.0' "
        "UpdateInstallFile='old' UpdateInstallURL='http://127.0.0.1:8080/program'/>"
        "</Range></Compatibility></Product>";
    Alter(offer, "\"3.1.555.0\"", "'3.2.0.0' UpdateArgument='a b'");
    Alter(offer, "/>", range.c_str());
    Alter(offer, "='old'", "='installer'");
    EXPECT_THAT(fails(), testing::HasSubstr("give each a file of its own"));
    Alter(offer, "='installer'", "='old'");
    shared_.Write("program/share/VardoCatalogue.pub", Minisign().Key());
    EXPECT_TRUE(Release({"--key", key}, EXIT_ERRORS).join(' ').contains("would refuse the file"));
    InstallKey();
    shared_.Write("program/share/VardoProductUpdate.pub", Minisign().Key());
    EXPECT_TRUE(Release({"--installer-key", key, "--key", key}, EXIT_ERRORS).join(' ').contains("refuse"));
    EXPECT_EQ(ReadWholeFile(shared_.Path("site/products.xml")).find("<!--minisign"), std::string::npos);
    shared_.Write("program/share/VardoProductUpdate.pub", Maker().Key());
    const QStringList lines = Release({"--installer-key", key, "--key", key}, EXIT_CLEAN)
                                  .filter(QRegularExpression(": signed|ller$"));
    EXPECT_EQ(lines.mid(0, 3),
              QStringList({"site/program/installer", "site/program/installer.minisig: signed",
                           "site/program/beta.minisig: signed"}));
    EXPECT_TRUE(lines.value(3).startsWith("site/gallery/")) << "descriptions lie between";
    EXPECT_TRUE(lines.value(lines.size() - 1).startsWith("site/products.xml: signed until "));
    EXPECT_EQ(ReadWholeFile(shared_.Path("site/program/old.minisig")), old) << "an older key's";
    EXPECT_EQ(Check().filter(QRegularExpression(": error: |minisig:.*private-file")), QStringList());
    Alter(offer, "UpdateVersion='3.0.0.0' UpdateInstallFile='old'",
          "UpdateVersion='3.2.0.0' UpdateArgument='a b' UpdateInstallFile='installer'");
    shared_.Write("site/program/installer.minisig", old);
    EXPECT_THAT(fails(), testing::HasSubstr("is of another key"));
    const std::string list = shared_.Path("site/products.xml");
    std::filesystem::rename(list, list + ".2");
    std::filesystem::create_symlink("products.xml.2", list);
    EXPECT_TRUE(Release({"--key", key}, EXIT_ERRORS).join(' ').contains("is a link"));
    std::filesystem::rename(list + ".2", list);
    std::filesystem::copy_file(Maker().SecretKeyFile(), shared_.Path("site/catalogue.key"));
    EXPECT_TRUE(Release({"--key", key}, EXIT_ERRORS).join(' ').contains("[secret-key]"));
    std::filesystem::remove(shared_.Path("site/catalogue.key"));

    Release({"--new", "n", "SoftwareUpdateVN2", "1.0.0.0"}, EXIT_ERRORS);
    std::filesystem::create_symlink("nowhere", shared_.Path("site/updates/SoftwareUpdateNEW.xml"));
    Release({"--new", "A & B", "SoftwareUpdateNEW", "1.0.0.0"}, EXIT_ERRORS);
    std::filesystem::remove(shared_.Path("site/updates/SoftwareUpdateNEW.xml"));
    Release({"--new", "A & B", "SoftwareUpdateNEW", "1.0.0.0"}, EXIT_CLEAN);
    Release({"--new", "A & B", "SoftwareUpdateNEW", "1.0.0.0"}, EXIT_ERRORS);
    EXPECT_EQ(Count(Check(), "program/share/SoftwareUpdateNEW.xml:1: note", "unlisted"), 1);
    EXPECT_EQ(Check().filter("NEW.xml").size(), 2) << "it is not signed yet, and nothing else";
    for (const QStringList& wrong :
         {QStringList(), QStringList{"--key", "nowhere"}, QStringList{"--installer-key", "nowhere"},
          QStringList{"--new", "n", "a/b", "1.0.0.0"}, QStringList{"--new", "n", "k", "1.0"},
          QStringList{"--new", "n", "languages", "1.0.0.0"}})
        Release(wrong, EXIT_WRONG_USAGE);
    std::filesystem::remove_all(shared_.Root());
    shared_.MakeDirectory("site");
    Release({"--site", "http://h/a&b", "--new", "A & B", "SoftwareUpdateNEW2", "1.0.0.0"}, EXIT_CLEAN);
    EXPECT_EQ(Check().filter(": error: "), QStringList()) << "of the first product";
    Release({"--new", "n", "SoftwareUpdateNEW", "1.0.0.0"}, EXIT_ERRORS);
}

TEST_F(SignedSite, TheStoredListCountsWhenItIsSignedForTheInstalledOnesAddress) {
    const ScopedEnvironment home("HOME", shared_.Path("home").c_str());
    const std::string list = "<P Version='9.0.0.0'><Product Name='n' BaseXml='b'/></P>\n";
    const std::pair<std::string, Verdict> cases[] = {
        {Signed(list, "path:/products.xml until:20270231"), Verdict::UNSIGNED},
        {Signed(list, "path:/lists/products.xml until:29991231"), Verdict::SIGNED_ELSEWHERE},
        {Signed(list, "path:/products.xml until:20200131"), Verdict::COUNTS},
    };
    InstallKey();
    for (const auto& [contents, verdict] : cases) {
        shared_.Write("home/.VARDO Technologies/Product Update/products.xml", contents);
        CProductListController controller(environment_);
        EXPECT_TRUE(controller.LoadProductList());
        EXPECT_EQ(controller.GetUsersVerdict(), verdict);
        EXPECT_EQ(controller.GetProducts().size(), verdict == Verdict::COUNTS ? 1U : 10U);
    }
}

}  // namespace
