// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The text type of the whole program: file names, settings, addresses, messages and XML values.
#pragma once

#include "platform/text/CSharedText.h"

#include <QString>

class CAtlStringA;

// A reference-counted, copy-on-write string of 32-bit wchar_t characters, one Unicode code point each.
// Layout, sharing and threads are those of CSharedText.
//
// Narrow sources are UTF-8: decoding stops at the first illegal or truncated sequence and keeps what came
// before it. Null pointers count as empty text.
class CAtlString : public CSharedText<wchar_t> {
public:
    CAtlString() noexcept = default;
    // NOLINTBEGIN(google-explicit-constructor): texts of every kind stand where the program's text is asked
    // for.
    CAtlString(const wchar_t* text);
    CAtlString(const wchar_t* text, int length);
    CAtlString(const char* utf8);
    CAtlString(const CAtlStringA& utf8);
    // The text's full length, embedded 0 characters included; a surrogate pair becomes one character.
    CAtlString(const QString& text);
    // NOLINTEND(google-explicit-constructor)

    // The characters up to the first 0 character.
    QString ToQString() const;

    // Appends; the text may be this one itself.
    CAtlString& operator+=(const CAtlString& text);
    CAtlString& operator+=(wchar_t ch);
    friend CAtlString operator+(const CAtlString& a, const CAtlString& b);

    // Compare with the case folding of the current C locale.
    int CompareNoCase(const CAtlString& other) const;
    // Last occurrence.
    int ReverseFind(wchar_t ch) const;
    // First character that is in set.
    int FindOneOf(const CAtlString& set) const;

    // The first, or the last, count characters; counts are clamped to 0 and the length.
    CAtlString Left(int count) const;
    CAtlString Right(int count) const;
    // At most count characters from first on. Negative arguments count as 0; beyond the end it is empty.
    CAtlString Mid(int first, int count) const;
    CAtlString Mid(int first) const;

    // Removes the run of ch at the left or the right end.
    CAtlString& TrimLeft(wchar_t ch);
    CAtlString& TrimRight(wchar_t ch);
    // Replaces every occurrence and returns how many there were; 0 when both characters are the same.
    int Replace(wchar_t old, wchar_t now);
    // Deletes count characters from index on and returns the length from before. A negative index counts as
    // 0, a count beyond the end as the rest.
    int Delete(int index, int count = 1);
};
