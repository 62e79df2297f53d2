// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// From strings files to the texts of the user interface.
#include <gtest/gtest.h>
#include <QSettings>
#include <filesystem>

#include "i18n/CResourceManagerLinux.h"
#include "i18n/QStringsTranslator.h"
#include "i18n/ResourceManager.h"
#include "platform/ResultCodes.h"
#include "support/TemporaryTree.h"
#include "support/TextPrinting.h"
#include "support/Utf16Bytes.h"

namespace {

// A machine whose language setup knows three languages, one of which is up to no good.
class Translator : public testing::Test {
protected:
    void SetUp() override {
        tree_.Write(
            "setup/Languages/languages.xml",
            "<T><L ID='0001' Code='one'/><L ID='0002' Code='two'/><L ID='0003' Code='../outside'/></T>");
        Machine().setValue("Software/VARDO Technologies/Language Setup/Path",
                           QString::fromStdString(tree_.Path("setup")));
        Write("one/App",
              uR"("Save" = "Sichern"; "Empty" = ""; "Twice" = "1"; "Twice" = "2"; "Größe" = "\ud83d\uDE00")");
        Write("one/More", u"Open=Auf; Save=Ab");
        Write("two/App", u"Open=Ouvrir");
        tree_.Write("outside/App.strings", Utf16Bytes(u"Save=Outside"));
    }
    void TearDown() override {
        Machine().clear();
        DestroyResourceManager();
    }

    static QSettings Machine() {
        return {QSettings::NativeFormat, QSettings::SystemScope, "VARDO Technologies"};
    }
    void Write(const std::string& name, const std::u16string& text) const {
        tree_.Write("Languages/" + name + ".strings", Utf16Bytes(text));
    }
    QString Languages() const { return QString::fromStdString(tree_.Path("Languages/")); }
    CVardoDirectoryPath Folder(const char* relative) const {
        return CVardoDirectoryPath(CAtlString(tree_.Path(relative).c_str()));
    }
    QString Text(const char* key) const { return translator_.translate("Context", key, "comment", 2); }

    TemporaryTree tree_;
    QStringsTranslator translator_;
};

}  // namespace

TEST_F(Translator, TextsComeFromTheLanguagesFile) {
    EXPECT_FALSE(translator_.isEmpty());
    EXPECT_EQ(Text("Save"), "Save") << "nothing loaded yet";
    EXPECT_TRUE(translator_.load("0001", "App", Languages()));
    EXPECT_EQ(Text("Save"), "Sichern");
    EXPECT_EQ(translator_.translate(nullptr, "Save"), "Sichern") << "the context does not matter";
    EXPECT_EQ(Text("Empty"), "Empty");
    EXPECT_EQ(Text("Twice"), "2");
    EXPECT_EQ(Text("Größe"), QString::fromUtf8("\xF0\x9F\x98\x80"));
    EXPECT_EQ(Text("save"), "save") << "keys are compared exactly";
    EXPECT_EQ(Text(""), "");
    EXPECT_EQ(Text(nullptr), "");
}

TEST_F(Translator, AnotherLanguageStartsAfreshAndTheSameOneAddsItsFiles) {
    translator_.load("0001", "App", QString::fromStdString(tree_.Path("")));
    EXPECT_EQ(Text("Open"), "Open");
    translator_.load("one", "More", Languages());
    EXPECT_EQ(Text("Open"), "Auf");
    EXPECT_EQ(Text("Save"), "Ab") << "the later file wins";
    EXPECT_EQ(Text("Twice"), "2") << "what it does not name stays";
    translator_.load("0001", "Missing", Languages());
    EXPECT_EQ(Text("Open"), "Auf");
    translator_.load("0002", "App", Languages());
    EXPECT_EQ(Text("Open"), "Ouvrir");
    EXPECT_EQ(Text("Save"), "Save");
    EXPECT_TRUE(translator_.load("nowhere", "App", Languages())) << "a load always succeeds";
    EXPECT_EQ(Text("Open"), "Open");
}

TEST_F(Translator, ACodeNeverLeadsOutOfTheLanguagesFolder) {
    ASSERT_TRUE(std::filesystem::exists(tree_.Path("Languages/../outside/App.strings")));
    translator_.load("0003", "App", Languages());
    EXPECT_EQ(Text("Save"), "Save");
    translator_.load("../outside", "App", Languages());
    EXPECT_EQ(Text("Save"), "Save");
    CResourceManagerLinux manager;
    EXPECT_FALSE(manager.Init(3, Languages(), L"App"));
}

TEST_F(Translator, WhatAManagerSaysOfFoldersAndFiles) {
    tree_.Write("odd/Empty.strings", "");
    tree_.MakeDirectory("odd/Folder.strings");
    std::filesystem::resize_file(tree_.Write("odd/Huge.strings", ""),
                                 CResourceManagerLinux::MAX_STRINGS_BYTES + 1);
    CResourceManagerLinux manager;
    EXPECT_FALSE(manager.Init(1, L"", L"App"));
    EXPECT_TRUE(manager.Init(1, Languages(), L"Missing")) << "the folder is there";
    EXPECT_EQ(manager.GetLanguageCode(), L"one");
    EXPECT_FALSE(manager.Init(7, Languages(), L"App"));

    const CVardoDirectoryPath one = Folder("Languages/one");
    EXPECT_EQ(manager.LoadStrings(one, L"App", false), RESULT_OK);
    for (const wchar_t* name : {L"Missing", L"Empty", L"Folder", L"Huge"})
        EXPECT_EQ(manager.LoadStrings(Folder("odd"), name, true), RESULT_INVALID_ARGUMENT) << name;
    EXPECT_EQ(manager.GetString("Save"), L"Sichern") << "failures with append change nothing";
    EXPECT_EQ(manager.LoadStrings(one, L"Missing", false), RESULT_INVALID_ARGUMENT);
    EXPECT_EQ(manager.GetString("Save"), L"Save");
}
