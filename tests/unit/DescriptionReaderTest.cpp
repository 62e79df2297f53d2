// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Local and remote update descriptions, and the offer that is chosen from them.
#include <gtest/gtest.h>
#include <filesystem>
#include <fstream>
#include <string>

#include "products/CUpdateXmlReader.h"
#include "support/TemporaryTree.h"
#include "support/TextPrinting.h"

namespace {

class Reader : public CUpdateXmlReader {
public:
    std::string localFile;
    std::string remoteFile;

protected:
    CAtlString GetLocalFile() const override { return localFile.c_str(); }
    CAtlString GetRemoteFile() override { return remoteFile.c_str(); }
};

// For the length of a scope the process is in test mode.
class TestMode {
public:
    TestMode() { std::ofstream(Path()) << "on"; }
    ~TestMode() { std::filesystem::remove(Path()); }
    TestMode(const TestMode&) = delete;
    TestMode& operator=(const TestMode&) = delete;

private:
    static std::string Path() { return CUpdateXmlReader::TEST_MARKER.ToQString().toStdString(); }
};

CAtlStringA Local(const std::string& version) {
    return ("<Local><Product CurrentVersion='" + version +
            "' RemoteVersionFile='r.xml' RemoteVersionFileURL='http://h/d'/></Local>")
        .c_str();
}

CAtlStringA Remote(const std::string& content) {
    return ("<Update Location='Server'>" + content + "</Update>").c_str();
}

std::string Range(const std::string& ends, const std::string& offer) {
    return "<Range " + ends + "><Product UpdateVersion='" + offer + "'/></Range>";
}

}  // namespace

TEST(LocalDescription, WhatIsAcceptedAndKept) {
    const struct {
        const char* situation;
        const char* attributes;
        bool accepted;
        const char* address;
        bool noUpdates;
    } cases[] = {
        {"folder without slash",
         "CurrentVersion='1' RemoteVersionFile='r.xml' RemoteVersionFileURL='http://h/d'", true,
         "http://h/d/r.xml", false},
        {"folder with slash",
         "CurrentVersion='1' RemoteVersionFile='r.xml' RemoteVersionFileURL='http://h/d/'", true,
         "http://h/d/r.xml", false},
        {"no updates",
         "CurrentVersion='1' RemoteVersionFile='r' RemoteVersionFileURL='http://h' NoUpdates='true'", true,
         "http://h/r", true},
        {"no updates in another case",
         "CurrentVersion='1' RemoteVersionFile='r' RemoteVersionFileURL='http://h' NoUpdates='True'", true,
         "http://h/r", false},
        {"empty version", "CurrentVersion='' RemoteVersionFile='r' RemoteVersionFileURL='http://h'", false,
         "http://h/r", false},
        {"no version", "RemoteVersionFile='r' RemoteVersionFileURL='http://h'", false, "http://h/r", false},
        {"no file name", "CurrentVersion='1' RemoteVersionFileURL='http://h'", false, "http://h/", false},
        {"no folder", "CurrentVersion='1' RemoteVersionFile='r'", false, "r", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.situation);
        Reader reader;
        const std::string text = std::string("<x><Product ") + c.attributes + "/></x>";
        EXPECT_EQ(reader.ParseLocal(text.c_str()), c.accepted);
        EXPECT_EQ(reader.IsLocalLoaded(), c.accepted);
        EXPECT_EQ(reader.GetRemoteAddress(), CAtlString(c.address));
        EXPECT_EQ(reader.IsNoUpdates(), c.noUpdates);
    }
}

TEST(RemoteDescription, WhatIsAccepted) {
    const struct {
        const char* situation;
        const char* text;
        bool accepted;
    } cases[] = {
        {"an offer", "<u Location='Server'><Product UpdateVersion='2.0.0.0'/></u>", true},
        {"an empty offer", "<u Location='Server'><Product/></u>", true},
        {"no location", "<u><Product UpdateVersion='2.0.0.0'/></u>", false},
        {"another location", "<u Location='server'><Product UpdateVersion='2.0.0.0'/></u>", false},
        {"no product", "<u Location='Server'><Other/></u>", false},
        {"a product of the test site alone", "<u Location='Server'><TestProduct/></u>", false},
        {"no element", "just text", false},
        {"nothing", "", false},
    };
    for (const auto& c : cases) {
        Reader reader;
        EXPECT_EQ(reader.ParseRemote(c.text), c.accepted) << c.situation;
        EXPECT_EQ(reader.IsRemoteLoaded(), c.accepted) << c.situation;
    }
}

TEST(RemoteDescription, EveryTextOfTheOfferIsKept) {
    Reader reader;
    ASSERT_TRUE(reader.ParseLocal(Local("1.0.0.0")));
    EXPECT_FALSE(reader.IsUpdateAvailable());
    ASSERT_TRUE(reader.ParseRemote(
        Remote("<Product UpdateVersion='2.0.0.0' UpdateInstallFile='f.run' UpdateInstallURL='http://i' "
               "UpdateInstallSize='12 MB' UpdateWebPage='http://p/?a=1&amp;b=ü' UpdateArgument='-q'/>")));
    EXPECT_TRUE(reader.IsUpdateAvailable());
    EXPECT_EQ(reader.GetUpdateVersion().GetString(), CAtlString("2.0.0.0"));
    EXPECT_EQ(reader.GetUpdateInstallFile(), CAtlString("f.run"));
    EXPECT_EQ(reader.GetUpdateInstallURL(), CAtlString("http://i"));
    EXPECT_EQ(reader.GetUpdateInstallSize(), CAtlString("12 MB"));
    EXPECT_EQ(reader.GetUpdateWebPage(), CAtlString("http://p/?a=1&b=ü"));
    EXPECT_EQ(reader.GetUpdateArgument(), CAtlString("-q"));
}

TEST(RemoteDescription, TheOfferForTheInstalledVersionIsChosen) {
    const std::string toEverybody = "<Product UpdateVersion='3.0.0.0'>";
    const std::string to1 = "VersionFrom='1.0.0.0' VersionTo='1.9.9.9'";
    const struct {
        const char* situation;
        const char* installed;
        std::string ranges;
        const char* offered;
        bool available;
    } cases[] = {
        {"no range covers it", "2.0.0.0", Range(to1, "2.5.0.0"), "3.0.0.0", true},
        {"a range covers it", "1.5.0.0", Range(to1, "2.5.0.0"), "2.5.0.0", true},
        {"the offer is installed", "3.0.0.0", Range(to1, "2.5.0.0"), "3.0.0.0", false},
        {"a later version is installed", "3.0.0.1", "", "3.0.0.0", false},
        {"a range holds an update back", "1.5.0.0", Range(to1, "1.5.0.0"), "1.5.0.0", false},
        {"an invalid version is below every offer", "beta", "", "3.0.0.0", true},
        {"two ranges from one version: the first", "1.5.0.0",
         Range(to1, "2.1.0.0") + Range("VersionFrom='1.0.0.0' VersionTo='1.7.0.0'", "2.2.0.0"), "2.1.0.0",
         true},
        {"overlapping ranges: the lower one", "1.5.0.0",
         Range("VersionFrom='1.4.0.0' VersionTo='1.6.0.0'", "2.4.0.0") + Range(to1, "2.1.0.0"), "2.1.0.0",
         true},
        {"a range without an offer is skipped", "1.5.0.0", "<Range " + to1 + "/>" + Range(to1, "2.2.0.0"),
         "2.2.0.0", true},
        {"a range with one end reaches down from it", "1.5.0.0", Range("VersionFrom='2.0.0.0'", "2.7.0.0"),
         "2.7.0.0", true},
        {"a range without ends covers nothing", "1.5.0.0", Range("", "2.8.0.0"), "3.0.0.0", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.situation);
        Reader reader;
        ASSERT_TRUE(reader.ParseLocal(Local(c.installed)));
        ASSERT_TRUE(reader.ParseRemote(
            Remote(toEverybody + "<Compatibility>" + c.ranges + "</Compatibility><Compatibility>" +
                   Range("VersionTo='9.0.0.0'", "9.9.9.9") + "</Compatibility></Product>")));
        EXPECT_EQ(reader.GetUpdateVersion().GetString(), CAtlString(c.offered));
        EXPECT_EQ(reader.IsUpdateAvailable(), c.available);
    }
}

TEST(RemoteDescription, TestModeReadsTheOffersOfTestProducts) {
    const CAtlStringA both = Remote(
        "<Product UpdateVersion='2.0.0.0'/>"
        "<TestProduct UpdateVersion='3.0.0.0'><Compatibility>"
        "<Range VersionTo='1.0.0.0'><Product UpdateVersion='4.0.0.0'/></Range>"
        "<Range VersionTo='1.5.0.0'><TestProduct UpdateVersion='5.0.0.0'/></Range>"
        "</Compatibility></TestProduct>");
    const CAtlStringA ordinary = Remote("<Product UpdateVersion='2.0.0.0'/>");
    const auto offered = [](const CAtlStringA& remote, const char* installed) {
        Reader reader;
        EXPECT_TRUE(reader.ParseLocal(Local(installed)));
        EXPECT_TRUE(reader.ParseRemote(remote));
        return reader.GetUpdateVersion().GetString();
    };
    EXPECT_EQ(offered(both, "1.0.0.0"), CAtlString("2.0.0.0"));
    {
        const TestMode on;
        EXPECT_EQ(offered(both, "2.0.0.0"), CAtlString("3.0.0.0"));
        EXPECT_EQ(offered(both, "1.0.0.0"), CAtlString("5.0.0.0"));
        EXPECT_EQ(offered(ordinary, "1.0.0.0"), CAtlString("2.0.0.0"));
        Reader reader;
        EXPECT_FALSE(
            reader.ParseLocal("<x><TestProduct CurrentVersion='1' RemoteVersionFile='r' "
                              "RemoteVersionFileURL='http://h'/></x>"));
    }
    EXPECT_EQ(offered(both, "1.0.0.0"), CAtlString("2.0.0.0"));
}

TEST(Descriptions, AreReadFromTheirFilesAndTheFetchedOneIsDeleted) {
    const TemporaryTree tree;
    Reader reader;
    EXPECT_FALSE(reader.LoadLocal());
    EXPECT_FALSE(reader.LoadRemote());
    reader.localFile = tree.Write("l.xml", Local("1.0.0.0").GetString());
    EXPECT_TRUE(reader.LoadLocal());
    for (const char* contents : {"<broken", "<u Location='Server'><Product UpdateVersion='2.0.0.0'/></u>"}) {
        reader.remoteFile = tree.Write("r.xml", contents);
        std::filesystem::permissions(reader.remoteFile, std::filesystem::perms::owner_read);
        EXPECT_EQ(reader.LoadRemote(), contents[1] == 'u');
        EXPECT_FALSE(std::filesystem::exists(reader.remoteFile));
    }
    EXPECT_TRUE(reader.IsUpdateAvailable());
    EXPECT_TRUE(std::filesystem::exists(reader.localFile));
}
