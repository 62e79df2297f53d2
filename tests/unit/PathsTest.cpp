// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Paths as texts, and the files and directories that they name.
#include <gtest/gtest.h>
#include <clocale>
#include <ctime>
#include <cwchar>
#include <filesystem>
#include <functional>

#include <fcntl.h>
#include <pwd.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "DataTable.h"
#include "platform/files/Addresses.h"
#include "platform/files/CFolderListing.h"
#include "platform/files/CTemporaryFolder.h"
#include "platform/files/CVardoDirectoryPath.h"
#include "platform/files/CVardoFilePath.h"
#include "platform/files/FileReplacement.h"
#include "platform/files/FileSystem.h"
#include "support/TemporaryTree.h"
#include "support/TextPrinting.h"

namespace {

// A new directory with a name in several scripts, under a locale that knows ASCII alone.
class Paths : public testing::Test {
public:
    Paths() {
        std::setlocale(LC_ALL, "C");
        EXPECT_TRUE(root_.Create());
    }
    ~Paths() override { std::setlocale(LC_ALL, ""); }

protected:
    std::string Name(const std::string& name) const { return tree_.Path(SCRIPTS + name); }
    CVardoFilePath In(const std::string& name) const { return CVardoFilePath(Name(name).c_str()); }
    CVardoFilePath Write(const std::string& name, const std::string& bytes) const {
        return CVardoFilePath(tree_.Write(SCRIPTS + name, bytes).c_str());
    }
    std::filesystem::perms Mode(const std::string& name) const {
        return std::filesystem::status(Name(name)).permissions();
    }

    static constexpr const char* SCRIPTS = "\xE4\xB8\xAD \xCE\x95\xCE\xBB \xF0\x9F\x98\x80/";
    const TemporaryTree tree_;
    const CVardoDirectoryPath root_{In("").GetFilePathString()};
};

}  // namespace

TEST(PathTexts, HavePartsAndGrowAndShrink) {
    for (const QStringList& row : DataTable("path-parts.txt")) {
        const CVardoFilePath file{CAtlString(row[0])};
        const CAtlString path = CVardoDirectoryPath(CAtlString(row[0])).GetDirectoryPathString();
        EXPECT_EQ(file.GetFilePathString(), path);
        EXPECT_EQ(path + L"|" + file.GetFileName() + L"|" + file.GetFileTitle() + L"|" + file.GetExtension(),
                  CAtlString(row.mid(1).join('|')));
    }
    CVardoDirectoryPath path(CVardoFilePath(L"/opt/run"));
    path.Append(L"");
    path.Append(L"sub\\deep/");
    EXPECT_EQ(path.GetDirectoryPathString(), L"/opt/sub/deep");
    EXPECT_TRUE(path.RemoveLastComponent());
    EXPECT_EQ(path.GetDirectoryPathString(), L"/opt/sub");
    EXPECT_FALSE(CVardoDirectoryPath(L"no-slash").RemoveLastComponent());
    EXPECT_TRUE(CVardoDirectoryPath(CVardoFilePath(L"no-slash")).IsEmpty());
}

TEST(Addresses, AreEncodedForBrowsersOnceAndOnlyWhereTheyMustBe) {
    const CAtlString legal = L"http://u:p@[::1]:80/a-._~!$&()*+,;=:@%20%zz%?b=c/d#e";
    EXPECT_EQ(PercentEncode(legal), legal);
    EXPECT_EQ(PercentEncode(L" \"'`\\<>^{|}"), L"%20%22%27%60%5C%3C%3E%5E%7B%7C%7D");
    EXPECT_EQ(PercentEncode(CAtlString(L"a\0\n\x1B\x7F\x80", 6)), L"a%00%0A%1B%7F%C2%80");
    EXPECT_EQ(PercentEncode(L"\u00E4\u4E2D\U0001F600"), L"%C3%A4%E4%B8%AD%F0%9F%98%80");
    EXPECT_EQ(PercentEncode(L"\xD800"), L"%EF%BF%BD");
}

TEST_F(Paths, AFolderListsVisibleFilesAndReadOnceTheSameInTheSameOrder) {
    for (const char* name : {"B.xml", "B1.xml", "B10.xml", "B2.xml", "B.xml.bak", "b.xml", ".B.xml", "[B.xml",
                             "\xE4\xB8\xAD.xml", "a.xml\xFF.xml", "ad.xml/f"})
        Write(name, "x");
    ASSERT_EQ(symlink("nowhere", Name("a.xml").c_str()), 0);
    const CFolderListing listing(root_);
    const std::pair<const char*, std::size_t> cases[] = {
        {"", 7}, {"B", 4}, {"B1", 2}, {"[B", 1}, {"B[12]", 3}, {"\xE4\xB8\xAD", 1}, {"B.xm", 0}, {"a", 0}};
    for (const auto& [beginning, count] : cases) {
        std::vector<CVardoFilePath> read;
        std::vector<CVardoFilePath> listed;
        root_.ListFiles(CAtlString(beginning) + L"*.xml", read);
        listing.ListFiles(beginning, L".xml", listed);
        ASSERT_TRUE(read.size() == count && listed.size() == count) << beginning << read.size();
        for (std::size_t i = 0; i < count; ++i)
            EXPECT_EQ(listed[i].GetFilePathString(), read[i].GetFilePathString()) << beginning;
    }
}

TEST_F(Paths, TemporaryNamesAreFree) {
    const CAtlString folder = L"/tmp/" + CAtlString(getpwuid(getuid())->pw_name);
    const CVardoFilePath first = CVardoDirectoryPath::GetTempFilePath(L".tmp", L"");
    EXPECT_EQ(first.GetFilePathString(), folder + L"/NBKTemp.tmp");
    EXPECT_TRUE(FileSystem::IsDirectory(folder));
    EXPECT_TRUE(FileSystem::IsTaken(CAtlString(std::wstring(300, L'x').c_str()))) << "nobody knows";
    const std::string name = first.GetFilePathString().ToQString().toStdString();
    ASSERT_EQ(symlink("/tmp/elsewhere", name.c_str()), 0);
    const CAtlString second = CVardoDirectoryPath::GetTempFilePath(L".tmp", L"").GetFileName();
    int number = -1;
    ASSERT_EQ(std::swscanf(second.GetString(), L"NBKTemp(%d).tmp", &number), 1);
    EXPECT_EQ(second.ToQString(), QString("NBKTemp(%1).tmp").arg(number));
    EXPECT_EQ(CVardoDirectoryPath::GetTempFilePath(L".run", L"Setup").GetFileName(), L"Setup.run");
    EXPECT_EQ(CVardoDirectoryPath::GetTempFilePath(L"./..\\\n\x7F\x85", L"a/b").GetFileName(), L"ab...");
    EXPECT_EQ(unlink(name.c_str()), 0);
}

TEST(TemporaryFolders, AreOutOfTheReachOfOthers) {
    using Path = const std::string&;
    using Make = std::function<bool(Path path)>;
    const auto folder = [](mode_t mode) -> Make {
        return [mode](Path path) { return mkdir(path.c_str(), 0700) == 0 && chmod(path.c_str(), mode) == 0; };
    };
    const Make nothing = [](Path) { return true; };
    const Make link = [](Path path) { return symlink("../cache", path.c_str()) == 0; };
    const Make file = [](Path path) { return mknod(path.c_str(), S_IFREG | 0600, 0) == 0; };
    // Only root can give a folder to another user.
    const Make anothers = [&](Path path) {
        return folder(0777)(path) && (geteuid() != 0 || chown(path.c_str(), 4711, 4711) == 0);
    };
    // Only root can give it away; elsewhere a file is as bad.
    const Make belowAnothers = [&](Path path) {
        return geteuid() != 0 ? file(path)
                              : folder(0700)(path) && chown((path + "/..").c_str(), 4711, 4711) == 0;
    };
    const std::string usual = "/shared \xE4\xB8\xAD/user";
    const std::string own = "/cache/new/own";
    const struct {
        const char* situation;
        Make there;
        mode_t shared, cache, mode;
        std::string taken;
    } rows[] = {
        {"nothing there", nothing, 01777, 0755, 0700, usual},
        {"others may read, in the user's folder", folder(0755), 0755, 0755, 0755, usual},
        {"the group may write", folder(0770), 01777, 0755, 0700, own},
        {"others may write", folder(0707), 01777, 0755, 0700, own},
        {"a folder of another user", anothers, 01777, 0755, 0700, own},
        {"in another user's folder", belowAnothers, 0755, 0755, 0700, own},
        {"a link to a safe folder", link, 01777, 0755, 0700, own},
        {"a file", file, 01777, 0755, 0700, own},
        {"others could rename it", folder(0700), 0777, 0755, 0700, own},
        {"no safe place", nothing, 0777, 0777, 0700, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.situation);
        const TemporaryTree tree;
        const std::string shared = tree.MakeDirectory("shared \xE4\xB8\xAD");
        const std::string cache = tree.MakeDirectory("cache/new");
        ASSERT_TRUE(row.there(shared + "/user"));
        ASSERT_TRUE(chmod(shared.c_str(), row.shared) == 0 && chmod(cache.c_str(), row.cache) == 0);
        const CTemporaryFolder temporary(CVardoDirectoryPath((shared + "/user").c_str()),
                                         CVardoDirectoryPath((cache + "/own").c_str()));
        const mode_t mask = umask(0777);
        const std::string taken = temporary.Get().GetDirectoryPathString().ToQString().toStdString();
        umask(mask);
        EXPECT_EQ(taken, row.taken.empty() ? "" : tree.Root() + row.taken);
        EXPECT_EQ(std::filesystem::status(taken).permissions(),
                  row.taken.empty() ? std::filesystem::perms::unknown : std::filesystem::perms(row.mode));
    }
}

TEST(TemporaryFolders, LoseOnlyWhatIsOldAndOurs) {
    const TemporaryTree tree;
    const auto age = [&tree](const std::string& name, int days) {
        const timespec past{std::time(nullptr) - days * 24L * 60 * 60, 0};
        const timespec both[] = {past, past};
        EXPECT_EQ(utimensat(AT_FDCWD, tree.Path(name).c_str(), both, AT_SYMLINK_NOFOLLOW), 0) << name;
    };
    const auto files = DataTable("stale-files.txt");
    for (const QStringList& row : files) {
        tree.Write(row[0].toStdString(), "left");
        age(row[0].toStdString(), row[1].toInt());
    }
    const std::string link = "shared/VARDOProductUpdate-link";
    std::filesystem::create_directory_symlink(tree.Path("elsewhere"), tree.Path(link));
    std::filesystem::create_directory_symlink(tree.Path("elsewhere"), tree.Path("linked"));
    age(link, 8);
    age("shared/VARDOProductUpdate-older", 8);
    for (const char* shared : {"shared", "linked"})
        CTemporaryFolder(CVardoDirectoryPath(tree.Path(shared).c_str()),
                         CVardoDirectoryPath(tree.Path("own").c_str()))
            .RemoveStaleFiles(L"NBKTemp", std::chrono::days(7));
    for (const QStringList& row : files)
        EXPECT_EQ(std::filesystem::exists(tree.Path(row[0].toStdString())), row[2] == "stays")
            << row[0].toStdString();
    EXPECT_TRUE(std::filesystem::is_symlink(tree.Path(link)));
    EXPECT_FALSE(std::filesystem::exists(tree.Path("shared/VARDOProductUpdate-older")));
}

TEST_F(Paths, AReplacementThatFailsLeavesTheOldFileAndNothingElse) {
    const std::string contents(5000, 'n');
    const CVardoFilePath old = Write("old", "old");
    Write("folder/inside", "x");
    for (const char* name : {"folder", "missing/file", "old/below", ""})
        EXPECT_FALSE(ReplaceFile(contents, In(name), 0600)) << name;
    EXPECT_FALSE(ReplaceFile(contents, CVardoFilePath(), 0600));
    rlimit room{};
    getrlimit(RLIMIT_FSIZE, &room);
    const rlimit tight{4000, room.rlim_max};
    setrlimit(RLIMIT_FSIZE, &tight);
    EXPECT_FALSE(ReplaceFile(contents, old, 0600)) << "a full disk";
    setrlimit(RLIMIT_FSIZE, &room);
    EXPECT_FALSE(
        FileSystem::RenameToFree(Write("folder/new", "new").GetFilePathString(), old.GetFilePathString()));
    EXPECT_EQ(ReadWholeFile(Name("old")), "old");
    std::vector<CAtlString> names;
    root_.ListNames(names);
    EXPECT_EQ(names.size(), 2U) << "old, folder";
}

TEST_F(Paths, AReplacedFileHasItsModeAndWhatAKilledWriterLeftGoes) {
    const CVardoFilePath list = Write("sub/list.xml", "old");
    Write("sub/list.xml.new-killed", "half");
    std::filesystem::last_write_time(Name("sub/list.xml.new-killed"),
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(2));
    EXPECT_TRUE(ReplaceFile("new", list, 0640));
    EXPECT_EQ(ReadWholeFile(Name("sub/list.xml")), "new");
    EXPECT_EQ(Mode("sub/list.xml"), std::filesystem::perms{0640});
    std::vector<CAtlString> names;
    CVardoDirectoryPath(list).ListNames(names);
    EXPECT_EQ(names, std::vector<CAtlString>{L"list.xml"});
}
