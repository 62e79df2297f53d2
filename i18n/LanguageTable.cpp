// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "i18n/LanguageTable.h"

#include <QCoreApplication>
#include <QDir>
#include <QSettings>
#include <limits>
#include <optional>
#include <vector>

#include "i18n/CStringsReader.h"
#include "platform/files/CVardoFilePath.h"
#include "platform/settings/SettingsStore.h"
#include "platform/xml/XmlFile.h"

namespace {

// Where the maker's programs say that they are installed, in the machine's settings.
struct InstalledFolder {
    const wchar_t* key;
    const wchar_t* name;
};

constexpr InstalledFolder INSTALLED_FOLDERS[] = {
    {L"Software\\VARDO Technologies\\Language Setup", L"Path"},
    {L"Software\\VARDO Technologies\\Notebook Software\\Install Information", L"NotebookExePath"},
    {L"Software\\VARDO Technologies\\VARDO Board Drivers\\Install Information", L"Drivers Directory"},
};

// The same in the language setup's own settings file, where the file name is not always below "Languages".
struct SetupFolder {
    const char* key;
    const char* table;
};

constexpr SetupFolder SETUP_FOLDERS[] = {
    {"Path", "/Languages/languages.xml"},
    {"Notebook/LanguagesFolder", "/languages.xml"},
    {"VARDO Board/LanguagesFolder", "/languages.xml"},
};

// Without this check, a missing setting would make a file in the root folder the table.
bool IsTable(const CAtlString& folder, const CAtlString& table) {
    return !folder.IsEmpty() && CVardoFilePath(folder + table).Exists();
}

CAtlString OwnTable() {
    const CAtlString folder(OwnLanguagesFolder());
    return IsTable(folder, LanguageFormat::FILE_NAME) ? folder + LanguageFormat::FILE_NAME : CAtlString();
}

CAtlString FindSetupsTable() {
    const QSettings settings(QSettings::NativeFormat, QSettings::SystemScope, "VARDO Technologies",
                             "Language Setup");
    for (const SetupFolder& place : SETUP_FOLDERS) {
        const CAtlString folder(settings.value(QLatin1String(place.key)).toString());
        if (IsTable(folder, place.table))
            return folder + place.table;
    }
    return OwnTable();
}

// The tables to ask, one after the other. Another program's table may be damaged, or lack a language whose
// texts this program has.
std::vector<CAtlString> ThenOwnTable(const CAtlString& table) {
    return {table, OwnTable()};
}

// The attribute wanted of the first language whose attribute match is value, if there is one.
std::optional<CAtlString> FindAttribute(const CAtlString& table, const CAtlString& value, const char* match,
                                        const char* wanted) {
    TiXmlDocument document;
    if (table.IsEmpty() || value.IsEmpty() || !LoadXml(CVardoFilePath(table), document))
        return std::nullopt;
    for (const TiXmlElement* language : Children(document.RootElement()))
        if (XmlAttribute(*language, match).CompareNoCase(value) == 0)
            return XmlAttribute(*language, wanted);
    return std::nullopt;
}

// The ID that a table has for a language, given as an ID or as a code. The ID comes first: only what is no
// known ID may be a code ("de" is a hexadecimal number too).
std::optional<int> FindId(const CAtlString& table, const CAtlString& language) {
    const int id = ParseHexLanguageId(language);
    if (FindAttribute(table, LanguageIdText(id), LanguageFormat::ID, LanguageFormat::ID))
        return id;
    const CAtlString withoutCountry = language.Left(language.FindOneOf(L"_-"));
    for (const CAtlString& code : {language, withoutCountry})
        if (const auto found = FindAttribute(table, code, LanguageFormat::CODE, LanguageFormat::ID))
            return ParseHexLanguageId(*found);
    return std::nullopt;
}

// What a table says of the direction of a language, given as an ID or as a code.
std::optional<CAtlString> FindDirection(const CAtlString& table, const CAtlString& language) {
    const auto byCode = FindAttribute(table, language, LanguageFormat::CODE, LanguageFormat::RIGHT_TO_LEFT);
    return byCode ? byCode
                  : FindAttribute(table, LanguageIdText(ResolveLanguageId(language)), LanguageFormat::ID,
                                  LanguageFormat::RIGHT_TO_LEFT);
}

}  // namespace

QString OwnLanguagesFolder() {
    QDir folder(QCoreApplication::applicationDirPath());
    if (!folder.exists() || !folder.cdUp())
        return {};
    return folder.absolutePath() + QLatin1String("/Languages/");
}

CAtlString FindLanguageTable() {
    const CAtlString table(L"/Languages/languages.xml");
    for (const InstalledFolder& place : INSTALLED_FOLDERS) {
        const CAtlString folder = ReadRegistryString(HKEY_LOCAL_MACHINE, place.key, place.name);
        if (IsTable(folder, table))
            return folder + table;
    }
    return OwnTable();
}

CAtlString LookupLanguageAttribute(const CAtlString& value, const char* match, const char* wanted) {
    for (const CAtlString& table : ThenOwnTable(FindLanguageTable()))
        if (const auto found = FindAttribute(table, value, match, wanted))
            return *found;
    return value;
}

CAtlString LanguageIdFromCode(const CAtlString& code) {
    return LookupLanguageAttribute(code, LanguageFormat::CODE, LanguageFormat::ID);
}

CAtlString LanguageAttributeById(int id, const char* attribute) {
    return LookupLanguageAttribute(LanguageIdText(id), LanguageFormat::ID, attribute);
}

CAtlString LanguageIdText(int id) {
    return CAtlString(QString("%1").arg(static_cast<unsigned>(id), 4, 16, QChar('0')).toUpper());
}

int ParseHexLanguageId(const CAtlString& text) {
    long long id = 0;
    for (const wchar_t ch : text) {
        const int digit = HexDigit(static_cast<char32_t>(ch));
        if (digit < 0)
            return 0;
        id = id * 16 + digit;
        if (id > std::numeric_limits<int>::max())
            return 0;
    }
    return static_cast<int>(id);
}

int ResolveLanguageId(const CAtlString& language) {
    for (const CAtlString& table : ThenOwnTable(FindLanguageTable()))
        if (const auto id = FindId(table, language))
            return *id;
    return ParseHexLanguageId(language);
}

bool IsRightToLeft(const CAtlString& language) {
    for (const CAtlString& table : ThenOwnTable(FindSetupsTable()))
        if (const auto direction = FindDirection(table, language))
            return *direction == L"1";
    return false;
}
