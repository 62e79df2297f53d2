// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// From strings files to the texts of the user interface.
#include <gtest/gtest.h>
#include <QSettings>
#include <filesystem>

#include "i18n/CResourceManagerLinux.h"
#include "i18n/QStringsTranslator.h"
#include "i18n/ResourceManager.h"
#include "platform/text/ResultCodes.h"
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
        Write("Languages/one/App", uR"("Save" = "Sichern"; Empty = ""; Twice = 1; Twice = 2; "Größe" = ok)");
        Write("Languages/one/More", u"Open=Auf; Save=Ab");
        Write("Languages/two/App", u"Open=Ouvrir");
        Write("outside/App", u"Save=Outside");
    }
    void TearDown() override {
        Machine().clear();
        DestroyResourceManager();
    }

    static QSettings Machine() {
        return {QSettings::NativeFormat, QSettings::SystemScope, "VARDO Technologies"};
    }
    void Write(const std::string& name, const std::u16string& text) const {
        tree_.Write(name + ".strings", Utf16Bytes(text));
    }
    QString Folder(const char* relative) const { return QString::fromStdString(tree_.Path(relative)); }
    QString Text(const char* key) const { return translator_.translate("Any context", key, "comment", 2); }

    TemporaryTree tree_;
    QStringsTranslator translator_;
};

}  // namespace

TEST_F(Translator, AnotherLanguageStartsAfreshAndTheSameOneAddsItsFiles) {
    EXPECT_EQ(Text("Save"), "Save") << "nothing loaded yet";
    translator_.load("0001", "App", Folder(""));
    for (const char* untranslated : {"save", "Empty", "Open", "", static_cast<const char*>(nullptr)})
        EXPECT_EQ(Text(untranslated), QString(untranslated));
    EXPECT_EQ(Text("Save"), "Sichern");
    EXPECT_EQ(Text("Größe"), "ok");
    translator_.load("one", "More", Folder("Languages/"));
    EXPECT_EQ(Text("Open"), "Auf");
    EXPECT_EQ(Text("Save"), "Ab") << "the later file wins";
    EXPECT_EQ(Text("Twice"), "2") << "what it does not name stays";
    translator_.load("0001", "Missing", Folder("Languages/"));
    EXPECT_EQ(Text("Open"), "Auf");
    translator_.load("0002", "App", Folder("Languages/"));
    EXPECT_EQ(Text("Open"), "Ouvrir");
    EXPECT_EQ(Text("Save"), "Save");
    EXPECT_TRUE(translator_.load("nowhere", "App", Folder("Languages/"))) << "a load always succeeds";
    EXPECT_EQ(Text("Open"), "Open");
    for (const char* outside : {"0003", "../outside"}) {
        translator_.load(outside, "App", Folder("Languages/"));
        EXPECT_EQ(Text("Save"), "Save") << "a code never leads out of the folder";
    }
}

TEST_F(Translator, FilesThatCannotBeStringsChangeNothing) {
    tree_.Write("odd/Empty.strings", "");
    tree_.MakeDirectory("odd/Folder.strings");
    std::filesystem::resize_file(tree_.Write("odd/Huge.strings", ""),
                                 CResourceManagerLinux::MAX_STRINGS_BYTES + 1);
    CResourceManagerLinux manager;
    EXPECT_FALSE(manager.Init(1, L"", L"App"));
    EXPECT_FALSE(manager.Init(7, Folder("Languages"), L"App"));
    EXPECT_TRUE(manager.Init(1, Folder("Languages"), L"Missing")) << "the folder is there";
    const auto load = [&](const char* folder, const wchar_t* name, bool append) {
        return manager.LoadStrings(CVardoDirectoryPath(CAtlString(Folder(folder))), name, append);
    };
    EXPECT_EQ(load("Languages/one", L"App", false), RESULT_OK);
    for (const wchar_t* name : {L"Missing", L"Empty", L"Folder", L"Huge"})
        EXPECT_EQ(load("odd", name, true), RESULT_INVALID_ARGUMENT) << name;
    EXPECT_EQ(manager.GetString("Save"), L"Sichern");
    EXPECT_EQ(load("Languages/one", L"Missing", false), RESULT_INVALID_ARGUMENT);
    EXPECT_EQ(manager.GetString("Save"), L"Save") << "what does not append drops what was there";
}
