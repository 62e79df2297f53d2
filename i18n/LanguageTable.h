// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The table of languages, languages.xml, which the maker's language setup installs: one element per language
// with the attributes "ID" (four hexadecimal digits), "Code", "NativeName" and "RightToLeft".
#pragma once

#include "platform/text/CAtlString.h"

#include <QString>

namespace LanguageFormat {

inline constexpr const wchar_t* FILE_NAME = L"languages.xml";

inline constexpr const char* ID = "ID";
inline constexpr const char* CODE = "Code";
inline constexpr const char* NATIVE_NAME = "NativeName";
inline constexpr const char* RIGHT_TO_LEFT = "RightToLeft";

}  // namespace LanguageFormat

// For the GUI thread. The table is small, and read anew at each call.

// The program's own languages: the folder "Languages" beside the folder of the executable, absolute and with
// a trailing "/". Empty when the executable's folder is gone or has no parent.
QString OwnLanguagesFolder();

// The path of the table that the machine's settings point to; without one, that of the table in
// the program's own folder. Empty when that is missing too.
CAtlString FindLanguageTable();

// The attribute wanted of the table's first language whose attribute match is value, whatever the case. A
// table that has no such language, or cannot be read, gives way to that in the program's own folder, and then
// to value itself.
CAtlString LookupLanguageAttribute(const CAtlString& value, const char* match, const char* wanted);

// The ID of a language by its code; the code itself when neither table knows it.
CAtlString LanguageIdFromCode(const CAtlString& code);

// An attribute of a language by its ID; the ID as text when neither table knows it.
CAtlString LanguageAttributeById(int id, const char* attribute);

// The ID as the table writes it: four upper-case hexadecimal digits.
CAtlString LanguageIdText(int id);

// The number that a hexadecimal text stands for. 0 when it is empty, holds any other character, or does not
// fit.
int ParseHexLanguageId(const CAtlString& text);

// The ID of a language given as an ID or as a code. A code that a table does not know is tried again without
// its country, before the table in the program's own folder is asked. What remains unknown is parsed as a
// hexadecimal ID.
int ResolveLanguageId(const CAtlString& language);

// Whether a language, given as an ID or as a code, is written from right to left. This asks the table that
// the language setup's own settings point to and, where that knows no such language or cannot be read, the
// one in the program's own folder.
bool IsRightToLeft(const CAtlString& language);
