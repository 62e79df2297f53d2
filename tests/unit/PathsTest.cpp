// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Paths as texts, and what happens to the files and directories behind them.
#include <gtest/gtest.h>
#include <clocale>
#include <csignal>
#include <cwchar>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <pwd.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

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

// A fresh directory with a name in several scripts, visited under a locale that knows none of them.
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

TEST(PathTexts, NormalFormNameTitleAndExtension) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"C:\\dir\\file.txt", L"C:/dir/file.txt|file.txt|file|.txt"},
        {L"a/b//", L"a/b/|||"},
        {L"dir.d/file", L"dir.d/file|file|file|"},
        {L"x/file.tar.gz", L"x/file.tar.gz|file.tar.gz|file.tar|.gz"},
        {L"/h/.hidden", L"/h/.hidden|.hidden||.hidden"},
        {L"../a/./b.", L"../a/./b.|b.|b|."},
        {L"\\", L"|||"},
    };
    for (const auto& [text, parts] : cases) {
        const CVardoFilePath file{CAtlString(text)};
        const CAtlString path = CVardoDirectoryPath(CAtlString(text)).GetDirectoryPathString();
        EXPECT_EQ(file.GetFilePathString(), path);
        EXPECT_EQ(path + L"|" + file.GetFileName() + L"|" + file.GetFileTitle() + L"|" + file.GetExtension(),
                  parts);
    }
}

TEST(PathTexts, DirectoriesGrowAndShrink) {
    CVardoDirectoryPath path(CVardoFilePath(L"/opt/run"));
    path.Append(L"");
    path.Append(L"sub\\deep/");
    EXPECT_EQ(path.GetDirectoryPathString(), L"/opt/sub/deep");
    EXPECT_TRUE(path.RemoveLastComponent());
    EXPECT_EQ(path.GetDirectoryPathString(), L"/opt/sub");
    EXPECT_FALSE(CVardoDirectoryPath(L"no-slash").RemoveLastComponent());
    EXPECT_TRUE(CVardoDirectoryPath(CVardoFilePath(L"no-slash")).IsEmpty());
}

// Beyond the table of docs/formats.md.
TEST(Addresses, BothRules) {
    EXPECT_EQ(WithTrailingSlash(L""), L"");
    EXPECT_EQ(JoinTrimmed(L"http://h/a\\\\//", L"f.xml"), L"http://h/a/f.xml");
}

TEST(Addresses, AreEncodedForBrowsersOnceAndOnlyWhereTheyMustBe) {
    const CAtlString legal = L"http://u:p@[::1]:80/a-._~!$&()*+,;=:@%20%zz%?b=c/d#e";
    const std::pair<CAtlString, CAtlString> cases[] = {
        {legal, legal},
        {L" \"'`\\<>^{|}", L"%20%22%27%60%5C%3C%3E%5E%7B%7C%7D"},
        {L"\n\x1B\x7F\x80", L"%0A%1B%7F%C2%80"},
        {CAtlString(L"a\0b", 3), L"a%00b"},
        {L"\u00E4\u4E2D\U0001F600", L"%C3%A4%E4%B8%AD%F0%9F%98%80"},
        {CAtlString(wchar_t(0xD800)), L"%EF%BF%BD"},
    };
    for (const auto& [address, encoded] : cases)
        EXPECT_EQ(PercentEncode(address), encoded);
}

TEST_F(Paths, OnlyFilesHaveSizeAndContents) {
    const std::string bytes("a\0b\xFF\r\n", 6);
    std::unique_ptr<char[]> buffer;
    EXPECT_EQ(Write("\xC3\xA4.bin", bytes).GetSize(), 6);
    ASSERT_EQ(In("\xC3\xA4.bin").ReadAll(buffer), 6);
    EXPECT_EQ(std::string(buffer.get(), 6), bytes);
    Write("empty", "");
    ASSERT_EQ(mkfifo(Name("pipe").c_str(), 0600), 0);
    for (const char* name : {"pipe", "", "missing/file", "empty/below", "empty"}) {
        EXPECT_EQ(In(name).GetSize(), name == std::string("empty") ? 0 : -1) << name;
        buffer = std::make_unique<char[]>(1);
        EXPECT_EQ(In(name).ReadAll(buffer), 0) << name;
        EXPECT_EQ(buffer, nullptr) << name;
    }
    EXPECT_EQ(CVardoFilePath(CAtlString(L'n', 5000)).GetSize(), -1);
}

TEST_F(Paths, TextsWithoutACompleteSystemFormNameNoFile) {
    const CVardoFilePath keep = Write("keep", "precious");
    for (const CAtlString& stop : {CAtlString(wchar_t(0)), CAtlString(wchar_t(0xD800))}) {
        const CVardoFilePath cut(keep.GetFilePathString() + stop + L".xml");
        EXPECT_FALSE(cut.Exists());
        EXPECT_TRUE(cut.Delete());
        EXPECT_FALSE(keep.CopyTo(cut, false));
        EXPECT_FALSE(CVardoDirectoryPath(In("keep2").GetFilePathString() + stop).Create());
    }
    EXPECT_EQ(ReadWholeFile(Name("keep")), "precious");
    EXPECT_FALSE(In("keep2").Exists());
}

TEST_F(Paths, DeletesReadOnlyFilesButOpensNoLinkTargets) {
    Write("read-only", "x");
    ASSERT_EQ(chmod(Name("read-only").c_str(), 0444), 0);
    ASSERT_EQ(symlink("read-only", Name("link").c_str()), 0);
    EXPECT_TRUE(In("link").Delete());
    EXPECT_EQ(Mode("read-only"), std::filesystem::perms{0444});
    EXPECT_TRUE(FileSystem::MakeWritable(In("read-only").GetFilePathString()));
    EXPECT_EQ(Mode("read-only"), std::filesystem::perms{0664});
    EXPECT_TRUE(In("read-only").Delete());
    EXPECT_FALSE(In("read-only").Exists());
    EXPECT_FALSE(In("").Delete());
}

TEST_F(Paths, CopiesBytesAndPermissions) {
    std::string bytes(300001, 'q');
    bytes[70000] = '\0';
    const CVardoFilePath source = Write("source", bytes);
    ASSERT_EQ(chmod(Name("source").c_str(), 0550), 0);
    EXPECT_TRUE(source.CopyTo(In("copy"), true));
    EXPECT_EQ(ReadWholeFile(Name("copy")), bytes);
    EXPECT_EQ(Mode("copy"), std::filesystem::perms{0550});
    Write("old", "something longer than what replaces it");
    EXPECT_TRUE(Write("small", "").CopyTo(In("old"), false));
    EXPECT_EQ(In("old").GetSize(), 0);
}

TEST_F(Paths, RefusedCopiesLeaveTheDestinationAlone) {
    const CVardoFilePath source = Write("source", "source");
    const CVardoFilePath other = Write("other", "other");
    ASSERT_EQ(link(Name("source").c_str(), Name("hard").c_str()), 0);
    for (const char* name : {"source", "./source", "hard", "no/such/folder"})
        EXPECT_FALSE(source.CopyTo(In(name), false)) << name;
    EXPECT_FALSE(source.CopyTo(other, true));
    EXPECT_FALSE(source.CopyTo(CVardoFilePath(L"/dev/full"), false));
    for (const char* name : {"missing", ""})
        EXPECT_FALSE(In(name).CopyTo(other, false)) << name;
    EXPECT_EQ(ReadWholeFile(Name("source")), "source");
    EXPECT_EQ(ReadWholeFile(Name("other")), "other");
}

TEST_F(Paths, ANewNameTakesNoOthersPlace) {
    const CAtlString from = Write("from", "from").GetFilePathString();
    Write("other", "other");
    ASSERT_EQ(symlink("nowhere", Name("link").c_str()), 0);
    for (const char* name : {"other", "link", "no/such/folder", ""})
        EXPECT_FALSE(FileSystem::RenameToFree(from, In(name).GetFilePathString())) << name;
    EXPECT_EQ(ReadWholeFile(Name("other")), "other");
    EXPECT_TRUE(FileSystem::RenameToFree(from, In("free").GetFilePathString()));
    EXPECT_EQ(ReadWholeFile(Name("free")), "from");
    EXPECT_FALSE(In("from").Exists());
}

TEST_F(Paths, CreatesMissingParents) {
    const CVardoDirectoryPath deep(In("a/\xE4\xB8\xAD/c").GetFilePathString());
    EXPECT_TRUE(deep.Create());
    EXPECT_TRUE(FileSystem::IsDirectory(deep.GetDirectoryPathString()));
    EXPECT_TRUE(deep.Create());
    Write("file", "x");
    EXPECT_FALSE(CVardoDirectoryPath(In("file/below").GetFilePathString()).Create());
    EXPECT_FALSE(CVardoDirectoryPath(QString("/d").repeated(200000)).Create());
}

TEST_F(Paths, AFolderListsVisibleFilesAndReadOnceTheSameInTheSameOrder) {
    for (int i = 0; i < 40; ++i)
        Write("B" + std::to_string(i) + ".xml", "x");
    for (const char* name :
         {"B.xml", "B.xml.bak", "b.xml", ".B.xml", "[B.xml", "\xE4\xB8\xAD.xml", "a.xml\xFF.xml", "ad.xml/f"})
        Write(name, "x");
    ASSERT_EQ(symlink("nowhere", Name("a.xml").c_str()), 0);
    const CFolderListing listing(root_);
    const std::pair<const char*, std::size_t> cases[] = {{"", 44},    {"B", 41},     {"B1", 11},
                                                         {"[B", 1},   {"B[12]", 22}, {"\xE4\xB8\xAD", 1},
                                                         {"B.xm", 0}, {"a", 0}};
    for (const auto& [beginning, count] : cases) {
        std::vector<CVardoFilePath> read;
        std::vector<CVardoFilePath> listed;
        root_.ListFiles(CAtlString(beginning) + L"*.xml", read);
        listing.ListFiles(beginning, L".xml", listed);
        ASSERT_EQ(read.size(), count) << beginning;
        ASSERT_EQ(listed.size(), count) << beginning;
        for (std::size_t i = 0; i < count; ++i)
            EXPECT_EQ(listed[i].GetFilePathString(), read[i].GetFilePathString()) << beginning;
    }
}

TEST_F(Paths, TemporaryNamesAreFree) {
    const CAtlString folder = L"/tmp/" + CAtlString(getpwuid(getuid())->pw_name);
    const CVardoFilePath first = CVardoDirectoryPath::GetTempFilePath(L".tmp", L"");
    EXPECT_EQ(first.GetFilePathString(), folder + L"/NBKTemp.tmp");
    EXPECT_TRUE(FileSystem::IsDirectory(folder));
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
    using Make = std::function<bool(const char* path)>;
    const auto folder = [](mode_t mode) -> Make {
        return [mode](const char* path) { return mkdir(path, 0700) == 0 && chmod(path, mode) == 0; };
    };
    const auto link = [](const char* target) -> Make {
        return [target](const char* path) { return symlink(target, path) == 0; };
    };
    const Make nothing = [](const char*) { return true; };
    const Make file = [](const char* path) { return mknod(path, S_IFREG | 0600, 0) == 0; };
    // Only root can give a folder away.
    const Make anothers = [](const char* path) {
        return mkdir(path, 0777) == 0 && (geteuid() == 0 ? chown(path, 4711, 4711) : chmod(path, 0777)) == 0;
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
        {"others may read", folder(0755), 01777, 0755, 0755, usual},
        {"in a folder of the user", folder(0700), 0755, 0755, 0700, usual},
        {"the group may write", folder(0770), 01777, 0755, 0700, own},
        {"others may write", folder(0707), 01777, 0755, 0700, own},
        {"another user's", anothers, 01777, 0755, 0700, own},
        {"a link to a safe folder", link("../cache"), 01777, 0755, 0700, own},
        {"a file", file, 01777, 0755, 0700, own},
        {"others could rename it", folder(0700), 0777, 0755, 0700, own},
        {"no safe place", nothing, 0777, 0777, 0700, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.situation);
        const TemporaryTree tree;
        const std::string shared = tree.MakeDirectory("shared \xE4\xB8\xAD");
        const std::string cache = tree.MakeDirectory("cache/new");
        ASSERT_TRUE(row.there((shared + "/user").c_str()));
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

TEST_F(Paths, AReplacementThatFailsLeavesTheOldFileAndNothingElse) {
    const CVardoFilePath source = Write("source", std::string(5000, 'n'));
    const CVardoFilePath old = Write("old", "old");
    Write("folder/inside", "x");
    for (const char* name : {"folder", "missing/file", "old/below", ""})
        EXPECT_FALSE(ReplaceFile(source, In(name), 0600)) << name;
    EXPECT_FALSE(ReplaceFile(In("missing"), old, 0600));
    EXPECT_FALSE(ReplaceFile(source, CVardoFilePath(), 0600));
    rlimit room{};
    getrlimit(RLIMIT_FSIZE, &room);
    const rlimit tight{4000, room.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &tight);
    EXPECT_FALSE(ReplaceFile(source, old, 0600)) << "a full disk";
    setrlimit(RLIMIT_FSIZE, &room);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(ReadWholeFile(Name("old")), "old");
    std::vector<CAtlString> names;
    root_.ListNames(names);
    EXPECT_EQ(names.size(), 3U) << "source, old, folder";
}

// For the few seconds that it takes, if nobody ends it before.
[[noreturn]] static void ReplaceAgainAndAgain(const CVardoFilePath (&sources)[2],
                                              const CVardoFilePath& list) {
    for (int turn = 0; turn < 10000; ++turn)
        ReplaceFile(sources[turn % 2], list, 0640);
    _exit(0);
}

TEST_F(Paths, AReplacedFileIsWholeWheneverItsWriterIsKilled) {
    const std::string texts[] = {std::string(300000, 'a'), std::string(200000, 'b')};
    const CVardoFilePath sources[] = {Write("a", texts[0]), Write("b", texts[1])};
    const CVardoFilePath list = Write("sub/list.xml", texts[0]);
    for (int i = 0; i < 50; ++i) {
        const pid_t writer = fork();
        ASSERT_GE(writer, 0);
        if (writer == 0)
            ReplaceAgainAndAgain(sources, list);
        usleep(static_cast<unsigned>(i * 919 % 3000));
        kill(writer, SIGKILL);
        ASSERT_EQ(waitpid(writer, nullptr, 0), writer);
        const std::string left = ReadWholeFile(Name("sub/list.xml"));
        ASSERT_TRUE(left == texts[0] || left == texts[1]) << left.size() << " bytes";
    }
    for (const auto& entry : std::filesystem::directory_iterator(Name("sub")))
        std::filesystem::last_write_time(
            entry, std::filesystem::file_time_type::clock::now() - std::chrono::hours(2));
    EXPECT_TRUE(ReplaceFile(sources[1], list, 0640));
    EXPECT_EQ(Mode("sub/list.xml"), std::filesystem::perms{0640});
    std::vector<CAtlString> names;
    CVardoDirectoryPath(list).ListNames(names);
    EXPECT_EQ(names, std::vector<CAtlString>{L"list.xml"});
}
