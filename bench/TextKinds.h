// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The operations that the text benchmarks time, once per text type and under the same names.
#pragma once

#include "platform/CAtlString.h"
#include "platform/CAtlStringA.h"

#include <QByteArray>
#include <QString>
#include <clocale>
#include <cstdlib>
#include <cwchar>
#include <string>

// Each function does for one type what its namesakes do for the others, in the way that the type's users
// would write it. QString holds UTF-16, so it moves half the bytes of the two wide types.
struct OurKind {
    using Text = CAtlString;
    using Bytes = CAtlStringA;
    static constexpr const char* NAME = "CAtlString";

    static Text FromQString(const QString& text) { return Text(text); }
    static QString ToQString(const Text& text) { return text.ToQString(); }
    static Text FromUtf8(const char* bytes) { return Text(bytes); }
    static Bytes ToUtf8(const Text& text) { return Bytes(text.GetString()); }
    static int Compare(const Text& a, const Text& b) { return a.Compare(b); }
    static long Find(const Text& text, const Text& sub) { return text.Find(sub); }
    static long Find(const Text& text, wchar_t ch) { return text.Find(ch); }
    static Text Mid(const Text& text, int first, int count) { return text.Mid(first, count); }
    static Text Format(const Text& name, int number) {
        Text text;
        text.Format(L"%s=%d", name.GetString(), number);
        return text;
    }
};

struct StdKind {
    using Text = std::wstring;
    using Bytes = std::string;
    static constexpr const char* NAME = "std::wstring";

    static Text FromQString(const QString& text) { return text.toStdWString(); }
    static QString ToQString(const Text& text) { return QString::fromStdWString(text); }
    // By the C library, in a UTF-8 locale.
    static Text FromUtf8(const char* bytes) {
        Text text(std::mbstowcs(nullptr, bytes, 0), L'\0');
        std::mbstowcs(text.data(), bytes, text.size());
        return text;
    }
    static Bytes ToUtf8(const Text& text) {
        Bytes bytes(std::wcstombs(nullptr, text.c_str(), 0), '\0');
        std::wcstombs(bytes.data(), text.c_str(), bytes.size());
        return bytes;
    }
    static int Compare(const Text& a, const Text& b) { return a.compare(b); }
    static long Find(const Text& text, const Text& sub) { return static_cast<long>(text.find(sub)); }
    static long Find(const Text& text, wchar_t ch) { return static_cast<long>(text.find(ch)); }
    static Text Mid(const Text& text, int first, int count) {
        return text.substr(static_cast<std::size_t>(first), static_cast<std::size_t>(count));
    }
    // vswprintf does not tell how much room it wants, so its users try with more and more.
    static Text Format(const Text& name, int number) {
        wchar_t buffer[256];
        int length = std::swprintf(buffer, std::size(buffer), L"%ls=%d", name.c_str(), number);
        if (length >= 0)
            return Text(buffer, static_cast<std::size_t>(length));
        Text text(2 * std::size(buffer), L'\0');
        while ((length = std::swprintf(text.data(), text.size(), L"%ls=%d", name.c_str(), number)) < 0)
            text.resize(2 * text.size());
        text.resize(static_cast<std::size_t>(length));
        return text;
    }
};

struct QtKind {
    using Text = QString;
    using Bytes = QByteArray;
    static constexpr const char* NAME = "QString";

    // A text with characters of its own: those of a literal are not counted.
    static Text FromQString(const QString& text) { return QString(text.constData(), text.size()); }
    static Text FromUtf8(const char* bytes) { return QString::fromUtf8(bytes); }
    static Bytes ToUtf8(const Text& text) { return text.toUtf8(); }
    static int Compare(const Text& a, const Text& b) { return a.compare(b); }
    static long Find(const Text& text, const Text& sub) { return static_cast<long>(text.indexOf(sub)); }
    static long Find(const Text& text, wchar_t ch) { return static_cast<long>(text.indexOf(QChar(ch))); }
    static Text Mid(const Text& text, int first, int count) { return text.mid(first, count); }
    static Text Format(const Text& name, int number) {
        return QString::asprintf("%ls=%d", qUtf16Printable(name), number);
    }
};
