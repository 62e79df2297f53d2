// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Which installers the program starts with the maker's key beside it, and that it starts the very bytes that
// it verified. The minisign tool makes the keys and signatures.
#include <gtest/gtest.h>
#include <filesystem>
#include <functional>

#include <sys/stat.h>
#include <unistd.h>

#include "DataTable.h"
#include "ProductTest.h"
#include "app/CSelfUpdate.h"
#include "net/Downloader.h"
#include "signing/CPrivateFolder.h"
#include "support/Minisign.h"

namespace fs = std::filesystem;

namespace {

constexpr char COMMENT[] = "file:setup.bin version:2.0.0.0";

// Several blocks of the size that the program reads at once, and a rest.
std::string InstallerBytes() {
    std::string bytes = "#!/bin/sh\n";
    while (bytes.size() < 200'001)
        bytes += "# " + std::to_string(bytes.size()) + "\n";
    return bytes;
}

const Minisign& Maker() {
    static const Minisign maker;
    return maker;
}

// The key on the machine and the offer on the site: a good one, until a case changes it.
struct Offer {
    std::string key = Maker().Key();
    std::string installer = InstallerBytes();
    std::string signature = Maker().Sign(installer, COMMENT);
    std::string file = "setup.bin";
    std::string version = "2.0.0.0";
    std::string argument;

    void SignWith(const std::string& comment, const std::vector<std::string>& options = {}) {
        signature = Maker().Sign(installer, comment, options);
    }
};

// Changes one character of a text, at an offset in a line; both count from 0.
void Alter(std::string& text, int line, std::size_t offset) {
    std::size_t at = 0;
    for (; line > 0; --line)
        at = text.find('\n', at) + 1;
    text.at(at + offset) = text.at(at + offset) == 'A' ? 'B' : 'A';
}

std::string WithWindowsLineEnds(const std::string& text) {
    return QByteArray::fromStdString(text).replace("\n", "\r\n").toStdString();
}

std::string TempFolder() {
    return CVardoDirectoryPath::GetTempDirectory().GetDirectoryPathString().ToQString().toStdString();
}

class InstallerSeal : public ProductTest {
protected:
    // The path of the installer that the program would start; empty when it refuses the offer.
    std::string PathFor(const Offer& offer) {
        const std::string address = "http://s/" + offer.file;
        Install("self.xml", "1.0.0.0");
        downloader_->Serve("http://h/r.xml", "<U Location='Server'><Product UpdateVersion='" + offer.version +
                                                 "' UpdateInstallFile='" + offer.file +
                                                 "' UpdateInstallURL='http://s' UpdateArgument='" +
                                                 offer.argument + "'/></U>");
        downloader_->Serve(address, offer.installer);
        downloader_->Serve(address + ".minisig", offer.signature);
        if (offer.signature.empty())
            downloader_->Forget(address + ".minisig");
        CSelfUpdate update("self.xml", *environment_);
        update.SetDownloader(downloader_);
        EXPECT_TRUE(update.LoadLocal() && update.LoadRemote() && update.IsUpdateAvailable());
        const bool isFetched = update.DownloadInstaller();
        EXPECT_EQ(isFetched, !update.GetInstallerPath().IsEmpty());
        for (const std::string& file : downloader_->files)
            EXPECT_FALSE(fs::exists(file)) << "what was fetched must not stay where it was";
        return update.GetInstallerPath().ToQString().toStdString();
    }
    // The installer holds the offered bytes, in a folder that only the user can write.
    void Expect(bool opens, const Offer& offer) {
        shared_.Write("VardoProductUpdate.pub", offer.key);
        const fs::path installer = PathFor(offer);
        EXPECT_EQ(!installer.empty(), opens);
        if (opens) {
            EXPECT_EQ(ReadWholeFile(installer), offer.installer);
            EXPECT_EQ(installer.parent_path().parent_path(), TempFolder());
            EXPECT_EQ(fs::status(installer).permissions(), fs::perms::owner_all);
            EXPECT_EQ(fs::status(installer.parent_path()).permissions(), fs::perms::owner_all);
            fs::remove_all(installer.parent_path());
        }
        EXPECT_TRUE(fs::is_empty(TempFolder()));
    }
};

TEST_F(InstallerSeal, OpensForTheMakersCommentOfThisFileAndVersion) {
    for (const QStringList& row : DataTable("trusted-comments.txt")) {
        SCOPED_TRACE(row[0].toStdString());
        Offer offer;
        offer.argument = row[1].toStdString();
        offer.SignWith(row[0].toStdString());
        Expect(row[2] == "yes", offer);
    }
    Offer control;
    control.SignWith(COMMENT + std::string(" \v"));
    Expect(false, control);
    Offer elsewhere;
    elsewhere.file = "new/größe.bin";
    elsewhere.SignWith("file:größe.bin\tversion:2.0.0.0");
    Expect(true, elsewhere);
    Offer nameless;
    nameless.file.clear();
    nameless.SignWith("file: version:2.0.0.0");
    Expect(false, nameless);
}

TEST_F(InstallerSeal, StaysShutForWhatWasAltered) {
    static const Minisign other;
    const std::tuple<const char*, bool, std::function<void(Offer&)>> cases[] = {
        {"the old form", false, [](Offer& o) { o.SignWith(COMMENT, {"-l"}); }},
        {"Windows line ends", true, [](Offer& o) { o.signature = WithWindowsLineEnds(o.signature); }},
        {"no line end at the last line", true, [](Offer& o) { o.signature.pop_back(); }},
        {"a new key before the old one", true, [](Offer& o) { o.key = Minisign().Key() + o.key; }},
        {"a line after the signature", false, [](Offer& o) { o.signature += "x\n"; }},
        {"no signature", false, [](Offer& o) { o.signature.clear(); }},
        {"another maker's key", false, [](Offer& o) { o.key = other.Key(); }},
        {"a line after the installer", false, [](Offer& o) { o.installer += "x\n"; }},
        {"altered installer", false, [](Offer& o) { Alter(o.installer, 9000, 2); }},
        {"altered signature", false, [](Offer& o) { Alter(o.signature, 1, 40); }},
        {"altered trusted comment", false,
         [](Offer& o) {
             o.signature.replace(o.signature.find("2.0.0.0"), 1, "3");
             o.version = "3.0.0.0";
         }},
        {"a huge key", false, [](Offer& o) { o.key.insert(o.key.find('\n'), 5'000, 'x'); }},
    };
    for (const auto& [situation, opens, change] : cases) {
        SCOPED_TRACE(situation);
        Offer offer;
        change(offer);
        Expect(opens, offer);
    }
    const fs::path key = shared_.Path("VardoProductUpdate.pub");
    downloader_->installers.clear();
    for (const bool isLink : {true, false}) {
        fs::remove(key);
        isLink ? fs::create_symlink("nowhere", key) : void(fs::create_directory(key));
        EXPECT_EQ(PathFor(Offer()), "") << "needed as soon as the key's name is taken";
    }
    EXPECT_TRUE(downloader_->installers.empty()) << "nothing is fetched in vain";
}

TEST(PrivateFolder, TakesInOnlyWhatNobodyElseCouldHaveWritten) {
    const TemporaryTree tree;
    const std::string file = tree.Path("file.bin");
    const std::pair<const char*, std::function<void()>> cases[] = {
        {"the group may write it", [&] { chmod(file.c_str(), 0620); }},
        {"anybody may write it", [&] { chmod(file.c_str(), 0602); }},
        {"it has another name", [&] { fs::create_hard_link(file, tree.Path("name2")); }},
        {"it is a link",
         [&] {
             fs::rename(file, tree.Path("target"));
             fs::create_symlink(tree.Path("target"), file);
         }},
        {"it is a pipe", [&] { unlink(file.c_str()), mkfifo(file.c_str(), 0600); }},
        {"another user's, or gone",
         [&] { return chown(file.c_str(), 4711, 4711) == 0 ? 0 : unlink(file.c_str()); }},
        {"it is gone", [&] { unlink(file.c_str()); }},
    };
    for (const auto& [situation, change] : cases) {
        SCOPED_TRACE(situation);
        chmod(tree.Write("file.bin", "contents").c_str(), 0600);
        change();
        EXPECT_FALSE(CPrivateFolder().TakeIn(CVardoFilePath(CAtlString(file.c_str()))).IsOpen());
        EXPECT_FALSE(fs::exists(fs::symlink_status(file)));
        EXPECT_TRUE(fs::is_empty(TempFolder()));
        fs::remove(tree.Path("name2"));
    }
}

}  // namespace
