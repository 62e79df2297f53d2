// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Local and remote update descriptions, and the offer that is chosen from them, beyond docs/formats.md.
#include <gtest/gtest.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <tuple>

#include "products/CUpdateXmlReader.h"
#include "support/TextPrinting.h"

namespace {

const std::string SITE = "RemoteVersionFile='r' RemoteVersionFileURL='http://h' ";

class Reader : public CUpdateXmlReader {
public:
    bool ReadLocal(const std::string& attributes) {
        return ParseLocal(("<Local><Product " + attributes + "/></Local>").c_str());
    }
    bool ReadRemote(const std::string& content) {
        return ParseRemote(("<Update Location='Server'>" + content + "</Update>").c_str());
    }
    // What a remote description offers to a computer with that version.
    CAtlString Offer(const std::string& installed, const std::string& remote) {
        EXPECT_TRUE(ReadLocal(SITE + "CurrentVersion='" + installed + "'") && ReadRemote(remote));
        return GetUpdateVersion().GetString();
    }

protected:
    CAtlString GetLocalFile() const override { return {}; }
    CAtlString GetRemoteFile() override { return {}; }
};

std::string Range(const std::string& from, const std::string& to, const std::string& offer) {
    return "<Range VersionFrom='" + from + "' VersionTo='" + to + "'>" + offer + "</Range>";
}

std::string Offer(const std::string& version) {
    return "<Product UpdateVersion='" + version + "'/>";
}

}  // namespace

TEST(Descriptions, WhatIsAccepted) {
    for (const std::string& bad :
         {SITE, SITE + "CurrentVersion=''", std::string("CurrentVersion='1' RemoteVersionFileURL='http://h'"),
          std::string("CurrentVersion='1' RemoteVersionFile='r'")})
        EXPECT_FALSE(Reader().ReadLocal(bad)) << bad;
    const std::string good = SITE + "CurrentVersion='1' ";
    for (const std::string noUpdates : {"NoUpdates='true'", "NoUpdates='True'", ""}) {
        Reader reader;
        EXPECT_TRUE(reader.ReadLocal(good + noUpdates));
        EXPECT_EQ(reader.IsNoUpdates(), noUpdates == "NoUpdates='true'");
    }
    EXPECT_TRUE(Reader().ReadRemote("<Product/>"));
    EXPECT_FALSE(Reader().ReadRemote("<Other/>"));
    EXPECT_FALSE(Reader().ReadRemote("<TestProduct/>")) << "outside of test mode";
    EXPECT_FALSE(Reader().ParseRemote("<u><Product UpdateVersion='2.0.0.0'/></u>"));
    EXPECT_FALSE(Reader().ParseRemote("<u Location='server'><Product UpdateVersion='2.0.0.0'/></u>"));
}

TEST(Descriptions, TheOfferForTheInstalledVersionIsChosen) {
    const std::string to1 = Range("1.0.0.0", "1.9.9.9", Offer("2.1.0.0"));
    const std::tuple<const char*, const char*, std::string, const char*, bool> cases[] = {
        {"only the first list of ranges counts", "2.0.0.0", to1, "3.0.0.0", true},
        {"a range holds an update back", "1.5.0.0", Range("", "2.0.0.0", Offer("1.5.0.0")), "1.5.0.0", false},
        {"an invalid version is below every offer", "beta", "", "3.0.0.0", true},
        {"two from one version: the first", "1.5.0.0", to1 + Range("1.0.0.0", "1.7.0.0", Offer("2.2.0.0")),
         "2.1.0.0", true},
        {"overlapping: the lower one", "1.5.0.0", Range("1.4.0.0", "1.6.0.0", Offer("2.4.0.0")) + to1,
         "2.1.0.0", true},
        {"a range without an offer is skipped", "1.5.0.0", Range("1.0.0.0", "1.9.9.9", "") + to1, "2.1.0.0",
         true},
    };
    const auto remote = [](const std::string& ranges) {
        return "<Product UpdateVersion='3.0.0.0'><Compatibility>" + ranges +
               "</Compatibility><Compatibility>" + Range("0.0.0.1", "9.0.0.0", Offer("9.9.9.9")) +
               "</Compatibility></Product>";
    };
    for (const auto& [situation, installed, ranges, offered, available] : cases) {
        Reader reader;
        EXPECT_EQ(reader.Offer(installed, remote(ranges)), CAtlString(offered)) << situation;
        EXPECT_EQ(reader.IsUpdateAvailable(), available) << situation;
    }
}

TEST(Descriptions, InTestModeOrdinaryOffersAreTheLastResort) {
    const std::string marker = CUpdateXmlReader::TEST_MARKER.ToQString().toStdString();
    const std::string both = Offer("2.0.0.0") + "<TestProduct UpdateVersion='3.0.0.0'><Compatibility>" +
                             Range("", "1.0.0.0", Offer("4.0.0.0")) + "</Compatibility></TestProduct>";
    std::ofstream(marker).close();
    EXPECT_EQ(Reader().Offer("1.0.0.0", Offer("2.0.0.0")), CAtlString("2.0.0.0"));
    EXPECT_EQ(Reader().Offer("1.0.0.0", both), CAtlString("3.0.0.0")) << "a range without a test product";
    const std::string local = "<x><TestProduct CurrentVersion='1' " + SITE + "/></x>";
    EXPECT_FALSE(Reader().ParseLocal(local.c_str()));
    std::filesystem::remove(marker);
    EXPECT_EQ(Reader().Offer("1.0.0.0", both), CAtlString("2.0.0.0"));
}
