// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Which language is chosen, and what the language tables say of it.
#include <gtest/gtest.h>
#include <QApplication>
#include <QSettings>
#include <filesystem>

#include "i18n/CVARDOLanguageSettingsCache.h"
#include "i18n/InstallLanguage.h"
#include "i18n/Language.h"
#include "i18n/LanguageTable.h"
#include "i18n/QStringsTranslator.h"
#include "support/ScopedEnvironment.h"
#include "support/TemporaryTree.h"
#include "support/TextPrinting.h"

namespace {

QSettings Settings(QSettings::Scope scope, const char* application = "") {
    return {QSettings::NativeFormat, scope, "VARDO Technologies", application};
}

constexpr auto MACHINE = QSettings::SystemScope;
constexpr auto USER = QSettings::UserScope;
constexpr const char* SETUP = "Language Setup";

// Leaves no setting, no override and no translator behind. Without settings, the table is the shipped one.
class Language : public testing::Test {
protected:
    void TearDown() override {
        SetLocaleOverride({});
        Settings(MACHINE).clear();
        Settings(MACHINE, SETUP).clear();
        Settings(USER, SETUP).clear();
        std::filesystem::remove_all("/tmp/home/.kde");
        QCoreApplication::removeTranslator(&QStringsTranslator::Instance());
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

    static void Set(QSettings settings, const char* key, const std::string& value) {
        settings.setValue(QLatin1String(key), QString::fromStdString(value));
    }
    // A table in which each language is one line of attributes; the answer is the folder for "Path".
    std::string MakeTable(const std::string& folder, const std::string& languages) const {
        tree_.Write(folder + "/Languages/languages.xml", "<Table>" + languages + "</Table>");
        return tree_.Path(folder);
    }
    static CAtlString Chosen() { return GetLanguageSettings({})->GetLanguage(); }

    TemporaryTree tree_;
};

constexpr const char* SETUP_PATH = "Software/VARDO Technologies/Language Setup/Path";
constexpr const char* NOTEBOOK_PATH =
    "Software/VARDO Technologies/Notebook Software/Install Information/NotebookExePath";
constexpr const char* DRIVERS_PATH =
    "Software/VARDO Technologies/VARDO Board Drivers/Install Information/Drivers Directory";

}  // namespace

TEST_F(Language, LocaleNamesAreReduced) {
    const struct {
        const char* name;
        const char* reduced;
    } cases[] = {
        {"C", "en_CA"},     {"de_DE", "de"},    {"de_AT", "de"},    {"no_NO", "nb"},    {"nb_NO", "nb"},
        {"en_AU", "en_AU"}, {"en_GB", "en_GB"}, {"pt_BR", "pt_BR"}, {"zh_TW", "zh_TW"}, {"hi_IN", "hi_IN"},
        {"en", "en"},       {"eng_X", "eng"},   {"", ""},
    };
    for (const auto& one : cases)
        EXPECT_EQ(ReduceLocaleName(one.name), one.reduced) << one.name;
    EXPECT_EQ(GetSystemLocale(), "en_CA");

    EXPECT_EQ(CVARDOLanguageSettingsCache::CodeOfLocale("en_AU"), "en_US");
    for (const char* kept : {"en_GB", "en", "de", "pt_BR", "eng_X"})
        EXPECT_EQ(CVARDOLanguageSettingsCache::CodeOfLocale(kept), kept);
}

TEST_F(Language, EachSourceGivesWayToTheNext) {
    EXPECT_EQ(Chosen(), L"0409") << "the C locale";

    const std::string kdeGlobals = "/tmp/home/.kde/share/config/kdeglobals";
    Set({QString::fromStdString(kdeGlobals), QSettings::NativeFormat}, "Locale/Language", "fr:en_US");
    EXPECT_EQ(Chosen(), L"0409") << "KDE's settings, but no KDE session";
    const ScopedEnvironment kde("KDE_FULL_SESSION", "true");
    EXPECT_EQ(Chosen(), L"040C");

    Set(Settings(USER, SETUP), "Notebook/LanguageID", "0411");
    EXPECT_EQ(Chosen(), L"040C") << "the notebook software's language is not ours";
    Set(Settings(USER, SETUP), "VARDO Board/LanguageID", "xx_YY");
    EXPECT_EQ(Chosen(), L"xx_YY") << "the language setup's choice, unchanged";
    EXPECT_EQ(GetLocale(true), "xx_YY");
    EXPECT_EQ(GetLocale(false), "en_CA");

    SetLocaleOverride("de");
    EXPECT_EQ(GetLocale(true), "de");
    EXPECT_EQ(GetLocale(false), "de");
}

TEST_F(Language, KdeWithoutALanguageLeavesItToTheSystem) {
    const ScopedEnvironment kde("KDE_FULL_SESSION", "true");
    EXPECT_EQ(Chosen(), L"0409");
}

TEST_F(Language, TheNotebookSoftwareHasItsOwn) {
    Set(Settings(USER, SETUP), "Notebook/LanguageID", "0411");
    const QString previous = QCoreApplication::applicationName();
    for (const char* name : {"VARDO Notebook", "notebook"}) {
        QCoreApplication::setApplicationName(name);
        EXPECT_EQ(Chosen(), L"0411") << name;
        EXPECT_EQ(QCoreApplication::applicationName(), name) << "the identity is restored";
    }
    QCoreApplication::setApplicationName(previous);
}

TEST_F(Language, TheTableIsTheFirstThatExists) {
    const CAtlString own = FindLanguageTable();
    EXPECT_EQ(own, CAtlString(OwnLanguagesFolder() + "languages.xml"));
    const auto tableOf = [this](const char* folder) {
        return tree_.Path(folder) + "/Languages/languages.xml";
    };

    Set(Settings(MACHINE), DRIVERS_PATH, MakeTable("drivers", ""));
    EXPECT_EQ(FindLanguageTable(), CAtlString(tableOf("drivers").c_str()));
    Set(Settings(MACHINE), NOTEBOOK_PATH, MakeTable("notebook", ""));
    EXPECT_EQ(FindLanguageTable(), CAtlString(tableOf("notebook").c_str()));
    Set(Settings(MACHINE), SETUP_PATH, tree_.Path("nowhere"));
    EXPECT_EQ(FindLanguageTable(), CAtlString(tableOf("notebook").c_str()));
    Set(Settings(MACHINE), SETUP_PATH, MakeTable("setup", ""));
    EXPECT_EQ(FindLanguageTable(), CAtlString(tableOf("setup").c_str()));
}

TEST_F(Language, LookUpsIgnoreCaseAndHandBackWhatTheyDoNotFind) {
    Set(Settings(MACHINE), SETUP_PATH,
        MakeTable("setup",
                  "<a ID='0407' Code='de' NativeName='Gr\xC3\xBC\xC3\x9F'/><b ID='0C0a' Code='DE'/><c "
                  "Code='x'/><d ID='1'/>"));
    EXPECT_EQ(LanguageIdFromCode(L"De"), L"0407") << "the first of two";
    EXPECT_EQ(LanguageIdFromCode(L"fr"), L"fr");
    EXPECT_EQ(LanguageIdFromCode(L""), L"");
    EXPECT_EQ(LanguageIdFromCode(L"x"), L"") << "a language without the attribute";
    EXPECT_EQ(LanguageAttributeById(0x0C0A, "Code"), L"DE");
    EXPECT_EQ(LanguageAttributeById(0x407, "NativeName"), L"Gr\u00FC\u00DF");
    EXPECT_EQ(LanguageAttributeById(0x1F, "Code"), L"001F");

    for (const char* broken : {"", "<Table><a ID='0407' Code='de'", "<Table/>", "\xFF\xFE junk"}) {
        tree_.Write("setup/Languages/languages.xml", broken);
        EXPECT_EQ(LanguageIdFromCode(L"de"), L"de") << broken;
    }
}

TEST_F(Language, HexadecimalIds) {
    const struct {
        const wchar_t* text;
        int id;
    } cases[] = {
        {L"", 0},
        {L"0409", 0x409},
        {L"40c", 0x40C},
        {L"aBcDeF", 0xABCDEF},
        {L"de", 0xDE},
        {L"0x409", 0},
        {L" 0409", 0},
        {L"en_US", 0},
        {L"7FFFFFFF", 0x7FFFFFFF},
        {L"80000000", 0},
        {L"10000000000000409", 0},
    };
    for (const auto& one : cases)
        EXPECT_EQ(ParseHexLanguageId(one.text), one.id) << CAtlString(one.text).ToQString().toStdString();
}

// What the user may write behind -locale, and what becomes of it with the shipped files.
TEST_F(Language, EveryWayToNameALanguage) {
    const struct {
        const char* language;
        int id;
        Qt::LayoutDirection direction;
        const char* code;
        const char* close;
    } cases[] = {
        {"de", 0x407, Qt::LeftToRight, "de", "Schließen"},
        {"DE", 0x407, Qt::LeftToRight, "de", "Schließen"},
        {"0407", 0x407, Qt::LeftToRight, "de", "Schließen"},
        {"407", 0x407, Qt::LeftToRight, "de", "Schließen"},
        {"de_AT", 0x407, Qt::LeftToRight, "de_AT", "Schließen"},
        {"de-AT", 0x407, Qt::LeftToRight, "de-AT", "Schließen"},
        {"ar", 0x401, Qt::RightToLeft, "ar", "إغلاق"},
        {"0401", 0x401, Qt::RightToLeft, "ar", "إغلاق"},
        {"ar_EG", 0x401, Qt::RightToLeft, "ar_EG", "إغلاق"},
        {"HE", 0x40D, Qt::RightToLeft, "he", "סגירה"},
        {"pt_BR", 0x416, Qt::LeftToRight, "pt_BR", "Fechar"},
        {"zh_CN", 0x804, Qt::LeftToRight, "zh_CN", "关闭"},
        {"en_GB", 0x809, Qt::LeftToRight, "en_GB", "Close"},
        {"0409", 0x409, Qt::LeftToRight, "en_US", "Close"},
        {"pt_PT", 0, Qt::LeftToRight, "pt_PT", "Close"},
        {"da", 0xDA, Qt::LeftToRight, "da", "Close"},
        {"../../etc", 0, Qt::LeftToRight, "../../etc", "Close"},
        {"../de", 0, Qt::LeftToRight, "../de", "Close"},
        {"_", 0, Qt::LeftToRight, "_", "Close"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.language);
        SetLocaleOverride(one.language);
        EXPECT_EQ(ResolveLanguageId(QString(one.language)), one.id);
        EXPECT_EQ(LanguageCode(one.language), one.code);
        EXPECT_TRUE(InstallLanguage("VARDOProductUpdate", qApp, true));
        EXPECT_EQ(QApplication::layoutDirection(), one.direction);
        EXPECT_EQ(QCoreApplication::translate("AnyContext", "Close"), one.close);
        EXPECT_EQ(QCoreApplication::translate("AnyContext", "not in any file"), "not in any file");
    }
}

TEST_F(Language, WithoutAnApplicationNameOnlyEnglishIsInstalled) {
    QApplication::setLayoutDirection(Qt::RightToLeft);
    SetLocaleOverride("de");
    EXPECT_FALSE(InstallLanguage({}, qApp, true));
    EXPECT_EQ(QApplication::layoutDirection(), Qt::RightToLeft) << "left alone";
    SetLocaleOverride("en_GB");
    EXPECT_TRUE(InstallLanguage({}, qApp, true));
    EXPECT_EQ(QApplication::layoutDirection(), Qt::LeftToRight);
    EXPECT_EQ(QCoreApplication::translate("C", "Close"), "Close");
}

TEST_F(Language, TheDirectionComesFromTheLanguageSetupsOwnTable) {
    EXPECT_TRUE(IsRightToLeft(L"ar"));
    const std::string languages = "<a ID='0401' Code='ar' RightToLeft='0'/><b Code='de' RightToLeft='%'/>";
    const auto table = [&](const char* folder, const char* german) {
        std::string text = languages;
        return MakeTable(folder, text.replace(text.find('%'), 1, german));
    };
    Set(Settings(MACHINE, SETUP), "VARDO Board/LanguagesFolder", table("board", "1") + "/Languages");
    EXPECT_FALSE(IsRightToLeft(L"ar")) << "the program's own table is not asked";
    EXPECT_FALSE(IsRightToLeft(L"0401"));
    EXPECT_TRUE(IsRightToLeft(L"de"));
    EXPECT_TRUE(IsRightToLeft(L"DE"));
    Set(Settings(MACHINE, SETUP), "Notebook/LanguagesFolder", table("notebook", "true") + "/Languages");
    EXPECT_FALSE(IsRightToLeft(L"de")) << "only 1 counts";
    Set(Settings(MACHINE, SETUP), "Path", table("setup", "1"));
    EXPECT_TRUE(IsRightToLeft(L"de"));
}
