// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The text type of the whole program: file names, settings, addresses, messages and XML values.
#pragma once

#include "platform/CSharedText.h"

#include <QMetaType>
#include <QString>

class CAtlStringA;

// A reference-counted, copy-on-write string of 32-bit wchar_t characters, one Unicode code point each.
// Layout, sharing, threads and the operations that know nothing of encodings are those of CSharedText.
//
// Narrow sources are UTF-8: decoding stops at the first illegal or truncated sequence and keeps what came
// before it. Null pointers count as empty text.
class CAtlString : public CSharedText<CAtlString, wchar_t> {
public:
    CAtlString() noexcept = default;
    CAtlString(const CAtlString&);
    CAtlString(CAtlString&&) noexcept = default;
    // NOLINTBEGIN(google-explicit-constructor): texts of every kind stand where the program's text is asked
    // for.
    CAtlString(const wchar_t* text);
    CAtlString(const wchar_t* text, int length);
    CAtlString(const char* utf8);
    CAtlString(const CAtlStringA& utf8);
    // The text's full length, embedded 0 characters included; a surrogate pair becomes one character.
    CAtlString(const QString& text);
    // NOLINTEND(google-explicit-constructor)
    // count copies of a character; none when count is not positive. A narrow character is sign-extended.
    explicit CAtlString(wchar_t ch, int count = 1);
    explicit CAtlString(char ch, int count = 1);
    ~CAtlString() = default;

    CAtlString& operator=(const CAtlString&) = default;
    CAtlString& operator=(CAtlString&&) noexcept = default;
    CAtlString& operator=(const wchar_t* text);
    CAtlString& operator=(const char* utf8);
    CAtlString& operator=(const CAtlStringA& utf8);
    CAtlString& operator=(const QString& text);
    CAtlString& operator=(wchar_t ch);
    CAtlString& operator=(char ch);

    // The characters up to the first 0 character.
    QString ToQString() const;

    CAtlString& operator+=(const CAtlString& text);
    CAtlString& operator+=(const wchar_t* text);
    CAtlString& operator+=(const char* utf8);
    CAtlString& operator+=(wchar_t ch);
    CAtlString& operator+=(char ch);

    friend CAtlString operator+(const CAtlString& a, const CAtlString& b);
    friend CAtlString operator+(const CAtlString& a, const wchar_t* b);
    friend CAtlString operator+(const wchar_t* a, const CAtlString& b);
    friend CAtlString operator+(const CAtlString& a, const char* b);
    friend CAtlString operator+(const char* a, const CAtlString& b);
    friend CAtlString operator+(const CAtlString& a, wchar_t b);
    friend CAtlString operator+(wchar_t a, const CAtlString& b);

    // Becomes the text that vswprintf makes of format and the arguments, or appends it. "%s" takes a wide
    // (const wchar_t*) argument, as "%ls" does. The text stays as it was when formatting fails: an encoding
    // error, a result of more than MAX_FORMATTED characters, or no memory.
    void Format(const wchar_t* format, ...);
    void AppendFormat(const wchar_t* format, ...);

    // Bound of Format and AppendFormat, in characters.
    static constexpr int MAX_FORMATTED = 1 << 24;
};

Q_DECLARE_METATYPE(CAtlString)
