// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Which language the program chooses, what the language tables say of it, and which texts its files give.
#include <gtest/gtest.h>
#include <QApplication>
#include <QSettings>
#include <filesystem>
#include <memory>
#include <optional>

#include "DataTable.h"
#include "i18n/CResourceManagerLinux.h"
#include "i18n/CStringsReader.h"
#include "i18n/CVARDOLanguageSettingsCache.h"
#include "i18n/Language.h"
#include "i18n/LanguageTable.h"
#include "i18n/QStringsTranslator.h"
#include "i18n/startup/InstallLanguage.h"
#include "platform/settings/CSettingsIdentity.h"
#include "support/ScopedEnvironment.h"
#include "support/TextPrinting.h"
#include "support/Utf16Bytes.h"

namespace {

constexpr auto MACHINE = QSettings::SystemScope;
constexpr auto USER = QSettings::UserScope;
constexpr const char* SETUP = "Language Setup";
constexpr const char* MAKER = "VARDO Technologies";
const std::string TABLE = "/Languages/languages.xml";
constexpr const char* SETUP_PATH = "Software/VARDO Technologies/Language Setup/Path";
constexpr const char* NOTEBOOK_PATH =
    "Software/VARDO Technologies/Notebook Software/Install Information/NotebookExePath";
constexpr const char* DRIVERS_PATH =
    "Software/VARDO Technologies/VARDO Board Drivers/Install Information/Drivers Directory";

// Removes settings, override and translator after each test. Without settings, the shipped table counts.
class Language : public testing::Test {
protected:
    void TearDown() override {
        SetLocaleOverride({});
        for (const char* application : {"", SETUP})
            for (const auto scope : {MACHINE, USER})
                QSettings(QSettings::NativeFormat, scope, MAKER, application).clear();
        std::filesystem::remove_all("/tmp/home/.kde");
        QCoreApplication::removeTranslator(&QStringsTranslator::Instance());
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

    static void Set(QSettings::Scope scope, const char* application, const char* key,
                    const std::string& value) {
        QSettings(QSettings::NativeFormat, scope, MAKER, application)
            .setValue(key, QString::fromStdString(value));
    }
    // Writes a table with these elements of languages; returns the folder for "Path".
    std::string MakeTable(const std::string& folder, const std::string& languages = "") const {
        tree_.Write(folder + TABLE, "<Table>" + languages + "</Table>");
        return tree_.Path(folder);
    }
    void WriteStrings(const std::string& name, const std::u16string& text) const {
        tree_.Write(name + ".strings", Utf16Bytes(text));
    }
    QString Folder(const char* relative) const { return QString::fromStdString(tree_.Path(relative)); }
    static CAtlString Chosen() { return GetLanguageSettings({})->GetLanguage(); }

    TemporaryTree tree_;
};

}  // namespace

TEST_F(Language, LocaleNamesAreReduced) {
    for (const QStringList& row : DataTable("locale-names.txt")) {
        EXPECT_EQ(ReduceLocaleName(row[0]), row[1]);
        EXPECT_EQ(CVARDOLanguageSettingsCache::CodeOfLocale(row[0]), row[2]) << row[0].toStdString();
    }
}

TEST_F(Language, EachSourceGivesWayToTheNext) {
    std::optional<ScopedEnvironment> kde(std::in_place, "KDE_FULL_SESSION", "true");
    EXPECT_EQ(Chosen(), L"0409") << "the C locale, and KDE says nothing";
    QSettings("/tmp/home/.kde/share/config/kdeglobals", QSettings::NativeFormat)
        .setValue("Locale/Language", "fr:en_US");
    EXPECT_EQ(Chosen(), L"040C");
    kde.reset();
    EXPECT_EQ(Chosen(), L"0409") << "KDE's settings, but no KDE session";
    kde.emplace("KDE_FULL_SESSION", "true");

    Set(USER, SETUP, "Notebook/LanguageID", "0411");
    EXPECT_EQ(Chosen(), L"040C") << "the notebook software's language is not ours";
    for (const char* name : {"VARDO Notebook", "notebook"}) {
        const CSettingsIdentity notebook(MAKER, "", name);
        EXPECT_EQ(Chosen(), L"0411") << name;
    }
    Set(USER, SETUP, "VARDO Board/LanguageID", "xx_YY");
    EXPECT_EQ(GetLocale(true), "xx_YY") << "the language setup's choice, unchanged";
    SetLocaleOverride("de");
    EXPECT_EQ(GetLocale(true), "de");
}

TEST_F(Language, TheTableIsTheFirstThatExistsAndTheOwnOneAnswersAfterIt) {
    const auto tableIsOf = [this](const char* folder) {
        return FindLanguageTable() == CAtlString(tree_.Path(folder + TABLE).c_str());
    };
    EXPECT_EQ(FindLanguageTable().ToQString(), OwnLanguagesFolder() + "languages.xml");
    Set(MACHINE, "", DRIVERS_PATH, MakeTable("drivers"));
    EXPECT_TRUE(tableIsOf("drivers"));
    Set(MACHINE, "", NOTEBOOK_PATH, MakeTable("notebook"));
    EXPECT_TRUE(tableIsOf("notebook"));
    Set(MACHINE, "", SETUP_PATH, tree_.Path("nowhere"));
    EXPECT_TRUE(tableIsOf("notebook"));
    Set(MACHINE, "", SETUP_PATH,
        MakeTable("setup", "<a ID='0407' Code='de'/><b ID='0C0a' Code='DE'/><c Code='x'/>"));
    EXPECT_TRUE(tableIsOf("setup"));
    EXPECT_EQ(LanguageIdFromCode(L"De"), L"0407") << "the first of two";
    EXPECT_EQ(LanguageIdFromCode(L"x"), L"") << "a language without the attribute";
    EXPECT_EQ(LanguageAttributeById(0x0C0A, "Code"), L"DE");
    EXPECT_EQ(LanguageAttributeById(0x1F, "Code"), L"001F") << "no table has it";
    tree_.Write("setup" + TABLE, "\xFF\xFE junk");
    EXPECT_EQ(LanguageIdFromCode(L"ja"), L"0411");
}

TEST_F(Language, EveryWayToNameALanguage) {
    for (const QStringList& row : DataTable("language-names.txt")) {
        SCOPED_TRACE(row[0].toStdString());
        SetLocaleOverride(row[0]);
        EXPECT_EQ(ResolveLanguageId(row[0]), row[1].toInt(nullptr, 16));
        EXPECT_EQ(LanguageCode(row[0]), row[3]);
        EXPECT_TRUE(InstallLanguage("VARDOProductUpdate", qApp, true));
        EXPECT_EQ(QApplication::layoutDirection() == Qt::RightToLeft, row[2] == "right-to-left");
        EXPECT_EQ(QCoreApplication::translate("AnyContext", "Close"), row[4]);
    }
    EXPECT_EQ(ResolveLanguageId(L" 0409"), 0);
}

TEST_F(Language, AnotherLanguageStartsAfreshAndTheSameOneAddsItsFiles) {
    Set(MACHINE, "", SETUP_PATH,
        MakeTable("setup",
                  "<L ID='0001' Code='one'/><L ID='0002' Code='two'/><L ID='0003' Code='../outside'/>"));
    WriteStrings("Languages/one/App",
                 uR"("Save" = "Sichern"; Empty = ""; Twice = 1; Twice = 2; "Größe" = ok)");
    WriteStrings("Languages/one/More", u"Open=Auf; Save=Ab");
    WriteStrings("Languages/two/App", u"Open=Ouvrir");
    WriteStrings("outside/App", u"Save=Outside");
    QStringsTranslator translator;
    const auto text = [&](const char* key) { return translator.translate("Any context", key, "comment", 2); };
    EXPECT_EQ(text("Save"), "Save") << "nothing loaded yet";
    translator.load("0001", "App", Folder(""));
    for (const char* untranslated : {"save", "Empty", "Open", ""})
        EXPECT_EQ(text(untranslated), QString(untranslated));
    EXPECT_EQ(text("Save"), "Sichern");
    EXPECT_EQ(text("Größe"), "ok");
    translator.load("one", "More", Folder("Languages/"));
    EXPECT_EQ(text("Open"), "Auf");
    EXPECT_EQ(text("Save"), "Ab") << "the later file wins";
    EXPECT_EQ(text("Twice"), "2") << "what it does not name stays";
    translator.load("0002", "App", Folder("Languages/"));
    EXPECT_EQ(text("Open"), "Ouvrir");
    EXPECT_EQ(text("Save"), "Save");
    for (const char* outside : {"0003", "../outside"}) {
        translator.load(outside, "App", Folder("Languages/"));
        EXPECT_EQ(text("Save"), "Save") << "a code never leads out of the folder";
    }
    DestroyResourceManager();
}

namespace {

using namespace std::string_literals;
// Keys and texts, in turn.
using Texts = std::vector<CAtlString>;

// Reads from a copy of exactly that size, so that the address sanitizer sees a read beyond its end.
Texts Read(const std::string& bytes) {
    const auto copy = std::make_unique<char[]>(bytes.size());
    bytes.copy(copy.get(), bytes.size());
    CStringsReader reader(std::string_view(copy.get(), bytes.size()));
    Texts texts;
    CAtlString key;
    CAtlString text;
    while (reader.ReadPair(key, text))
        texts.insert(texts.end(), {key, text});
    return texts;
}

}  // namespace

TEST(CStringsReader, TokensBecomePairsInBothByteOrders) {
    std::vector<std::pair<std::u16string, Texts>> cases = {
        {u"", {}},
        {u"a=b;c d\te\rf\ng\0h;=\r\n"s, {L"a", L"b", L"c", L"d", L"e", L"f", L"g", L"h"}},
        {u"\"A;B\"=\"1 = 2;\n\t\";", {L"A;B", L"1 = 2;\n\t"}},
        {uR"("k"="\n\t\rx")", {L"k", L"\n\t\rx"}},
        {uR"("k"="\u0g4Zz")", {L"k", L"\u0004z"}},
        {u"a/**/b=c//x\nd;", {L"ab", L"cd"}},
    };
    for (const QStringList& row : DataTable("strings-files.txt"))
        cases.emplace_back(row[0].toStdU16String(), Texts(row.begin() + 1, row.end()));
    for (const auto& [file, texts] : cases) {
        EXPECT_EQ(Read(Utf16Bytes(file)), texts) << QString::fromStdU16String(file).toStdString();
        EXPECT_EQ(Read(Utf16Bytes(file, true)), texts) << QString::fromStdU16String(file).toStdString();
    }
}

TEST(CStringsReader, BytesOutOfTheOrdinary) {
    const Texts pair{L"a", L"b"};
    EXPECT_EQ(Read(""), Texts());
    EXPECT_EQ(Read(Utf16Bytes(u"xa=b;c").substr(2)), pair) << "without a mark, the first unit is skipped";
    EXPECT_EQ(Read(Utf16Bytes(u"a=b") + 'x'), pair) << "a last odd byte is dropped";
    EXPECT_EQ(Read(Utf16Bytes(u"a=x\xD800y")), (Texts{L"a", L"x\uFFFDy"})) << "a lone surrogate";
}
