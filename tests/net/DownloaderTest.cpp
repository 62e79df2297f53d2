// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The downloader: which files it makes, which bounds it keeps, and whom it blames for a failure.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <filesystem>

#include <sys/mount.h>
#include <sys/stat.h>

#include "net/Downloader.h"
#include "platform/files/CVardoDirectoryPath.h"
#include "support/LoopbackServer.h"
#include "support/TemporaryTree.h"
#include "support/TextPrinting.h"
#include "unit/DataTable.h"

namespace {

class ADownloader : public testing::Test {
public:
    ~ADownloader() override { Clear(); }

protected:
    ADownloader() {
        server_.Serve(LoopbackServer::ANY, LoopbackAnswer::Body("fetched"));
        Clear();
    }

    static std::string Folder() {
        return CVardoDirectoryPath::GetTempDirectory().GetDirectoryPathString().ToQString().toStdString();
    }

    static void Clear() {
        for (const auto& entry : std::filesystem::directory_iterator(Folder()))
            std::filesystem::remove_all(entry);
    }

    // The path of the fetched file within the temporary directory; empty when the fetch failed.
    std::string Fetch(const QString& address) {
        std::string path = downloader_.Download(CAtlString(address)).ToQString().toStdString();
        if (path.empty())
            return path;
        EXPECT_TRUE(path.starts_with(Folder() + "/")) << path;
        EXPECT_EQ(ReadWholeFile(path), "fetched");
        EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0600)) << path;
        return path.substr(Folder().size() + 1);
    }

    LoopbackServer server_;
    Downloader downloader_;
};

}  // namespace

TEST_F(ADownloader, NamesFilesAfterTheExtensionOfTheAddress) {
    for (const QStringList& row : DataTable("download-names.txt")) {
        Clear();
        EXPECT_EQ(Fetch(server_.Address(row[0].toStdString())), row[1].toStdString()) << row[0].toStdString();
    }
    Fetch(server_.Address("/a.xml"));
    EXPECT_THAT(Fetch(server_.Address("/a.xml")), testing::MatchesRegex("NBKTemp\\([0-9]+\\)\\.xml"));
}

TEST_F(ADownloader, HoldsEverythingButInstallersToItsBounds) {
    Downloader narrow({.bodyBytes = 3});
    const CAtlString address(server_.Address("/setup.bin"));
    EXPECT_TRUE(narrow.Download(address).IsEmpty());
    narrow.FetchAhead({address});
    EXPECT_TRUE(narrow.Download(address).IsEmpty());
    int done = 0;
    EXPECT_FALSE(narrow.DownloadInstaller(address, [&](int bytes, int) { done = bytes; }).IsEmpty());
    EXPECT_GT(done, 3);
    const int before = done;
    EXPECT_FALSE(narrow.DownloadInstaller(address, {}).IsEmpty());
    EXPECT_EQ(done, before) << "nobody hears of a later transfer";
}

TEST_F(ADownloader, SaysWhoFailed) {
    server_.Serve("http://updates.invalid/gone.xml", LoopbackAnswer::Status(404));
    QString told;
    downloader_.SetFailureCallback([&](const QString& text) { told = text; });
    for (const QStringList& row : DataTable("download-failures.txt")) {
        downloader_.SetProxy(CAtlString(row[1]),
                             row[2].toInt() + (row[2].contains(u'+') ? server_.Port() : 0));
        EXPECT_EQ(Fetch(row[0]), "");
        EXPECT_EQ(told, row[3]);
    }
    // In the tests' own mount namespace.
    std::ofstream("/tmp/hosts") << "127.0.0.1 updates.invalid\n";
    ASSERT_EQ(mount("/tmp/hosts", "/etc/hosts", nullptr, MS_BIND, nullptr), 0);
    downloader_.FetchAhead({});
    downloader_.SetProxy(L"", 0);
    EXPECT_NE(Fetch(server_.Address("/a.xml").replace("127.0.0.1", "updates.invalid")), "") << "asked again";
    umount("/etc/hosts");
}
