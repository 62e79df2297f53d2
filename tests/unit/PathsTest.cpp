// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Paths as texts, and what happens to the files and directories behind them.
#include <gtest/gtest.h>
#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cwchar>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/Addresses.h"
#include "platform/CFolderListing.h"
#include "platform/CVardoDirectoryPath.h"
#include "platform/CVardoFilePath.h"
#include "platform/FileSystem.h"
#include "support/TextPrinting.h"

namespace {

// A fresh directory with a name in several scripts, visited under a locale that knows none of them.
class Paths : public testing::Test {
protected:
    void SetUp() override {
        std::setlocale(LC_ALL, "C");
        root_ = CVardoDirectoryPath(L"/tmp/paths \x4E2D\x6587 \x0395\x03BB \U0001F600");
        ASSERT_TRUE(root_.Create());
    }
    void TearDown() override {
        const std::string remove = "rm -rf '" + Utf8(root_.GetDirectoryPathString()) + "'";
        EXPECT_EQ(std::system(remove.c_str()), 0);
        std::setlocale(LC_ALL, "");
    }

    static std::string Utf8(const CAtlString& text) { return text.ToQString().toStdString(); }
    CVardoFilePath In(const wchar_t* name) const { return CVardoDirectoryPath::Combine(root_, name); }
    static void Write(const CVardoFilePath& file, const std::string& bytes) {
        std::ofstream(Utf8(file.GetFilePathString()), std::ios::binary) << bytes;
    }
    static std::string Read(const CVardoFilePath& file) {
        std::unique_ptr<char[]> buffer;
        const long count = file.ReadAll(buffer);
        return buffer ? std::string(buffer.get(), static_cast<std::size_t>(count)) : std::string();
    }
    static mode_t Mode(const CVardoFilePath& file) {
        struct stat status {};
        return stat(Utf8(file.GetFilePathString()).c_str(), &status) == 0 ? status.st_mode & 0777U : 0;
    }

    CVardoDirectoryPath root_;
};

}  // namespace

TEST(PathTexts, NormalFormAndParts) {
    const struct {
        const wchar_t* text;
        const wchar_t* normal;
        const wchar_t* name;
        const wchar_t* title;
        const wchar_t* extension;
    } cases[] = {
        {L"C:\\dir\\file.txt", L"C:/dir/file.txt", L"file.txt", L"file", L".txt"},
        {L"a/b/", L"a/b", L"b", L"b", L""},
        {L"a/b//", L"a/b/", L"", L"", L""},
        {L"dir.d/file", L"dir.d/file", L"file", L"file", L""},
        {L"x/file.tar.gz", L"x/file.tar.gz", L"file.tar.gz", L"file.tar", L".gz"},
        {L"/h/.hidden", L"/h/.hidden", L".hidden", L"", L".hidden"},
        {L"../a/./b.", L"../a/./b.", L"b.", L"b", L"."},
        {L"", L"", L"", L"", L""},
        {L"\\", L"", L"", L"", L""},
    };
    for (const auto& c : cases) {
        const CVardoFilePath file{CAtlString(c.text)};
        SCOPED_TRACE(testing::PrintToString(CAtlString(c.text)));
        EXPECT_EQ(file.GetFilePathString(), c.normal);
        EXPECT_EQ(CVardoDirectoryPath(CAtlString(c.text)).GetDirectoryPathString(), c.normal);
        EXPECT_EQ(file.GetFileName(), c.name);
        EXPECT_EQ(file.GetFileTitle(), c.title);
        EXPECT_EQ(file.GetExtension(), c.extension);
    }
    EXPECT_STREQ(CVardoFilePath(L"/\u00E9\u0142").GetFilePathStringA().GetString(), "/\xE9\x42");
}

TEST(PathTexts, DirectoriesGrowAndShrink) {
    CVardoDirectoryPath path(CVardoFilePath(L"/opt/app/bin/run"));
    EXPECT_EQ(path.GetDirectoryPathString(), L"/opt/app/bin");
    path.Append(L"");
    EXPECT_EQ(path.GetDirectoryPathString(), L"/opt/app/bin");
    path.Append(L"sub\\deep/");
    EXPECT_EQ(path.GetDirectoryPathString(), L"/opt/app/bin/sub/deep");
    EXPECT_TRUE(path.RemoveLastComponent());
    EXPECT_EQ(path.GetDirectoryPathString(), L"/opt/app/bin/sub");
    EXPECT_TRUE(CVardoDirectoryPath(CVardoFilePath(L"no-slash")).IsEmpty());
    CVardoDirectoryPath bare(L"bare");
    EXPECT_FALSE(bare.RemoveLastComponent());
    EXPECT_EQ(bare.GetDirectoryPathString(), L"bare");
}

TEST(Addresses, BothRules) {
    EXPECT_EQ(WithTrailingSlash(L"http://h/a"), L"http://h/a/");
    EXPECT_EQ(WithTrailingSlash(L"http://h/a/"), L"http://h/a/");
    EXPECT_EQ(WithTrailingSlash(L""), L"");
    EXPECT_EQ(JoinTrimmed(L"http://h/a\\\\//", L"f.xml"), L"http://h/a/f.xml");
    EXPECT_EQ(JoinTrimmed(L"http://h/a/\\", L"f.xml"), L"http://h/a//f.xml");
    EXPECT_EQ(JoinTrimmed(L"", L"f.xml"), L"/f.xml");
}

TEST_F(Paths, ReadsWhatIsThere) {
    const CVardoFilePath file = In(L"\u00E4\u4E2D.bin");
    EXPECT_FALSE(file.Exists());
    EXPECT_EQ(file.GetSize(), -1);
    const std::string bytes("a\0b\xFF\r\n", 6);
    Write(file, bytes);
    EXPECT_TRUE(file.Exists());
    EXPECT_EQ(file.GetSize(), 6);
    EXPECT_EQ(Read(file), bytes);
}

TEST_F(Paths, WhatIsNoFileReadsAsNothing) {
    Write(In(L"empty"), "");
    ASSERT_EQ(mkfifo(Utf8(In(L"pipe").GetFilePathString()).c_str(), 0600), 0);
    Write(In(L"file"), "x");
    const struct {
        CVardoFilePath path;
        long size;
    } cases[] = {
        {In(L"empty"), 0},
        {In(L"pipe"), -1},
        {CVardoFilePath(root_.GetDirectoryPathString()), -1},
        {In(L"missing/file"), -1},
        {In(L"file/below"), -1},
        {CVardoFilePath(), -1},
        {CVardoFilePath(CAtlString(L'n', 5000)), -1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.path.GetFilePathString()));
        EXPECT_EQ(c.path.GetSize(), c.size);
        std::unique_ptr<char[]> buffer = std::make_unique<char[]>(1);
        EXPECT_EQ(c.path.ReadAll(buffer), 0);
        EXPECT_EQ(buffer, nullptr);
    }
}

TEST_F(Paths, TextsWithoutACompleteSystemFormNameNoFile) {
    Write(In(L"keep"), "precious");
    for (const wchar_t stop : {wchar_t(0), wchar_t(0xD800)}) {
        const CVardoFilePath cut(In(L"keep").GetFilePathString() + stop + L".xml");
        EXPECT_FALSE(cut.Exists());
        EXPECT_TRUE(cut.Delete());
        EXPECT_FALSE(In(L"keep").CopyTo(cut, false));
        EXPECT_FALSE(CVardoDirectoryPath(In(L"keep2").GetFilePathString() + stop).Create());
    }
    EXPECT_EQ(Read(In(L"keep")), "precious");
    EXPECT_FALSE(In(L"keep2").Exists());
}

TEST_F(Paths, DeletesReadOnlyFilesButOpensNoLinkTargets) {
    const CVardoFilePath file = In(L"read-only");
    Write(file, "x");
    ASSERT_EQ(chmod(Utf8(file.GetFilePathString()).c_str(), 0444), 0);
    ASSERT_EQ(symlink("read-only", Utf8(In(L"link").GetFilePathString()).c_str()), 0);
    EXPECT_TRUE(In(L"link").Delete());
    EXPECT_EQ(Mode(file), 0444U);
    EXPECT_TRUE(FileSystem::MakeWritable(file.GetFilePathString()));
    EXPECT_EQ(Mode(file), 0664U);
    EXPECT_TRUE(file.Delete());
    EXPECT_FALSE(file.Exists());
    EXPECT_TRUE(file.Delete());
    EXPECT_FALSE(CVardoFilePath(root_.GetDirectoryPathString()).Delete());
}

TEST_F(Paths, CopiesBytesAndPermissions) {
    const CVardoFilePath source = In(L"source");
    std::string bytes(300001, 'q');
    bytes[70000] = '\0';
    Write(source, bytes);
    ASSERT_EQ(chmod(Utf8(source.GetFilePathString()).c_str(), 0550), 0);
    const CVardoFilePath copy = In(L"copy");
    EXPECT_TRUE(source.CopyTo(copy, true));
    EXPECT_EQ(Read(copy), bytes);
    EXPECT_EQ(Mode(copy), 0550U);
    Write(In(L"small"), "");
    Write(In(L"old"), "something longer than what replaces it");
    EXPECT_TRUE(In(L"small").CopyTo(In(L"old"), false));
    EXPECT_EQ(In(L"old").GetSize(), 0);
}

TEST_F(Paths, RefusedCopiesLeaveTheDestinationAlone) {
    const CVardoFilePath source = In(L"source");
    Write(source, "source");
    Write(In(L"other"), "other");
    const std::string name = Utf8(source.GetFilePathString());
    ASSERT_EQ(link(name.c_str(), Utf8(In(L"hard").GetFilePathString()).c_str()), 0);
    EXPECT_FALSE(source.CopyTo(source, false));
    EXPECT_FALSE(source.CopyTo(In(L"hard"), false));
    EXPECT_FALSE(source.CopyTo(In(L"./source"), false));
    EXPECT_FALSE(source.CopyTo(In(L"other"), true));
    EXPECT_FALSE(In(L"missing").CopyTo(In(L"other"), false));
    EXPECT_FALSE(CVardoFilePath(root_.GetDirectoryPathString()).CopyTo(In(L"other"), false));
    EXPECT_FALSE(source.CopyTo(In(L"no/such/folder"), false));
    EXPECT_FALSE(source.CopyTo(CVardoFilePath(L"/dev/full"), false));
    EXPECT_EQ(Read(source), "source");
    EXPECT_EQ(Read(In(L"other")), "other");
}

TEST_F(Paths, CreatesMissingParents) {
    CVardoDirectoryPath deep(root_);
    deep.Append(L"a/\u4E2D/c");
    EXPECT_TRUE(deep.Create());
    EXPECT_TRUE(FileSystem::IsDirectory(deep.GetDirectoryPathString()));
    EXPECT_TRUE(deep.Create());
    Write(In(L"file"), "x");
    EXPECT_FALSE(CVardoDirectoryPath(In(L"file/below").GetFilePathString()).Create());
    EXPECT_FALSE(CVardoDirectoryPath().Create());
    CAtlString endless(L'd', 200000);
    endless.Replace(L"d", L"/d");
    EXPECT_FALSE(CVardoDirectoryPath(endless).Create());
}

TEST_F(Paths, ListsVisibleFilesOfAPattern) {
    for (const wchar_t* name : {L"a.xml", L"\u4E2D.xml", L".hidden.xml", L"b.txt", L"back\\slash.xml"})
        Write(CVardoFilePath(In(name)), "x");
    const std::string folder = Utf8(root_.GetDirectoryPathString());
    ASSERT_EQ(mkdir((folder + "/dir.xml").c_str(), 0700), 0);
    ASSERT_EQ(symlink("nowhere", (folder + "/dangling.xml").c_str()), 0);
    std::ofstream(folder + "/a.xml\xFF.xml") << "x";
    std::vector<CVardoFilePath> files(1);
    root_.ListFiles(L"*.xml", files);
    std::multiset<std::string> names;
    std::transform(std::next(files.begin()), files.end(), std::inserter(names, names.end()),
                   [](const CVardoFilePath& file) { return Utf8(file.GetFilePathString()); });
    EXPECT_EQ(names, (std::multiset<std::string>{folder + "/a.xml", folder + "/\xE4\xB8\xAD.xml"}));
    CVardoDirectoryPath(In(L"missing").GetFilePathString()).ListFiles(L"*", files);
    CVardoDirectoryPath(In(L"a.xml").GetFilePathString()).ListFiles(L"*", files);
    EXPECT_EQ(files.size(), 3U);
}

TEST_F(Paths, AFolderReadOnceListsTheSameInTheSameOrder) {
    for (int i = 0; i < 40; ++i)
        Write(In((L"B" + std::to_wstring(i) + L".xml").c_str()), "x");
    for (const wchar_t* name :
         {L"B.xml", L"Bx.xml", L"B.xml.bak", L"b.xml", L".B.xml", L"[B.xml", L"\u4E2D.xml"})
        Write(In(name), "x");
    ASSERT_TRUE(CVardoDirectoryPath(In(L"B5d.xml").GetFilePathString()).Create());
    const CFolderListing listing(root_);
    for (const wchar_t* beginning :
         {L"", L"B", L"B1", L"[B", L"B[12]", L"\u4E2D", L"B.xml", L"B.xm", L"absent"}) {
        std::vector<CVardoFilePath> read;
        std::vector<CVardoFilePath> listed;
        root_.ListFiles(CAtlString(beginning) + L"*.xml", read);
        listing.ListFiles(beginning, L".xml", listed);
        EXPECT_TRUE(std::equal(
            read.begin(), read.end(), listed.begin(), listed.end(),
            [](const auto& a, const auto& b) { return a.GetFilePathString() == b.GetFilePathString(); }))
            << Utf8(beginning);
    }
}

TEST_F(Paths, TemporaryNamesAreFree) {
    const CAtlString folder = L"/tmp/" + CAtlString(getpwuid(getuid())->pw_name);
    EXPECT_EQ(CVardoDirectoryPath::GetTempDirectory().GetDirectoryPathString(), folder);
    EXPECT_TRUE(FileSystem::IsDirectory(folder));
    const CVardoFilePath first = CVardoDirectoryPath::GetTempFilePath(L".tmp", L"");
    EXPECT_EQ(first.GetFilePathString(), folder + L"/NBKTemp.tmp");
    EXPECT_FALSE(first.Exists());
    ASSERT_EQ(symlink("/tmp/elsewhere", Utf8(first.GetFilePathString()).c_str()), 0);
    const CAtlString second = CVardoDirectoryPath::GetTempFilePath(L".tmp", L"").GetFileName();
    int number = -1;
    ASSERT_EQ(std::swscanf(second.GetString(), L"NBKTemp(%d).tmp", &number), 1) << Utf8(second);
    CAtlString expected;
    expected.Format(L"NBKTemp(%d).tmp", number);
    EXPECT_EQ(second, expected);
    EXPECT_EQ(CVardoDirectoryPath::GetTempFilePath(L".run", L"Setup").GetFileName(), L"Setup.run");
    EXPECT_EQ(unlink(Utf8(first.GetFilePathString()).c_str()), 0);
}
