// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/CAtlString.h"

#include <cerrno>
#include <cstdarg>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "platform/CAtlStringA.h"
#include "platform/TextConversion.h"

namespace {

// In characters.
constexpr int FIRST_FORMAT_CAPACITY = 256;

// The characters of UTF-8 text can be no more than its bytes that do not continue a sequence.
int MaxDecodedLength(const char* bytes, int length) {
    return static_cast<int>(std::count_if(bytes, bytes + length, [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    }));
}

// Below the surrogates, where UTF-16 has the same number for the character.
bool IsOneUtf16Unit(wchar_t ch) {
    return ch >= 0 && ch < 0xD800;
}

int LengthOfBytes(const char* bytes) {
    return bytes ? static_cast<int>(std::strlen(bytes)) : 0;
}

CAtlString Decoded(const char* bytes, int length) {
    // A stray continuation byte ends the decoding, so a first one leaves nothing to make room for.
    const int room = length > 0 ? MaxDecodedLength(bytes, length) : 0;
    CAtlString text;
    wchar_t* out = room > 0 ? text.GetBuffer(room) : nullptr;
    const int count = room > 0 ? DecodeUtf8(bytes, length, out) : 0;
    if (count == 0)
        return CAtlString();
    text.ReleaseBuffer(count);
    return text;
}

// Nothing when formatting fails. What a too small buffer and an encoding error have in common is the result;
// what tells them apart is errno.
std::optional<CAtlString> Formatted(const wchar_t* format, std::va_list arguments) {
    CAtlString wideFormat(format);
    wideFormat.Replace(CAtlString(L"%s"), CAtlString(L"%ls"));
    for (int capacity = FIRST_FORMAT_CAPACITY; capacity <= CAtlString::MAX_FORMATTED; capacity *= 2) {
        std::vector<wchar_t> buffer(static_cast<std::size_t>(capacity));
        std::va_list copy;
        va_copy(copy, arguments);
        errno = 0;
        const int written = std::vswprintf(buffer.data(), buffer.size(), wideFormat.GetString(), copy);
        va_end(copy);
        if (written >= 0 && written < capacity)
            return CAtlString(buffer.data());
        if (errno == EILSEQ)
            break;
    }
    return std::nullopt;
}

}  // namespace

CAtlString::CAtlString(const wchar_t* text) {
    Assign(text, LengthOf(text));
}

CAtlString::CAtlString(const wchar_t* text, int length) {
    Assign(text, text ? length : 0);
}

CAtlString::CAtlString(const char* utf8) : CAtlString(Decoded(utf8, LengthOfBytes(utf8))) {}

CAtlString::CAtlString(const CAtlStringA& utf8) : CAtlString(Decoded(utf8.GetString(), utf8.GetLength())) {}

CAtlString::CAtlString(const QString& text) {
    if (text.isEmpty())
        return;
    wchar_t* out = GetBuffer(static_cast<int>(text.size()));
    SetLength(static_cast<int>(text.toWCharArray(out)));
}

CAtlString::CAtlString(wchar_t ch, int count) {
    Assign(ch, count);
}

CAtlString::CAtlString(char ch, int count) {
    Assign(static_cast<wchar_t>(static_cast<signed char>(ch)), count);
}

CAtlString& CAtlString::operator=(const wchar_t* text) {
    Assign(text, LengthOf(text));
    return *this;
}

CAtlString& CAtlString::operator=(const char* utf8) {
    return *this = CAtlString(utf8);
}

CAtlString& CAtlString::operator=(const CAtlStringA& utf8) {
    return *this = CAtlString(utf8);
}

CAtlString& CAtlString::operator=(const QString& text) {
    return *this = CAtlString(text);
}

CAtlString& CAtlString::operator=(wchar_t ch) {
    return *this = CAtlString(ch);
}

CAtlString& CAtlString::operator=(char ch) {
    return *this = CAtlString(ch);
}

QString CAtlString::ToQString() const {
    const auto length = static_cast<qsizetype>(std::wcslen(GetString()));
    const bool simple = std::all_of(GetString(), GetString() + length, IsOneUtf16Unit);
    // QString's own conversion makes a converter object and takes some 8 ns per character.
    if (!simple)
        return QString::fromWCharArray(GetString(), length);
    QString text(length, Qt::Uninitialized);
    std::transform(GetString(), GetString() + length, text.data(),
                   [](wchar_t ch) { return QChar(static_cast<char16_t>(ch)); });
    return text;
}

CAtlString& CAtlString::operator+=(const CAtlString& text) {
    AppendRange(text.GetString(), text.GetLength());
    return *this;
}

CAtlString& CAtlString::operator+=(const wchar_t* text) {
    AppendRange(text, LengthOf(text));
    return *this;
}

CAtlString& CAtlString::operator+=(const char* utf8) {
    return *this += CAtlString(utf8);
}

CAtlString& CAtlString::operator+=(wchar_t ch) {
    AppendRange(&ch, 1);
    return *this;
}

CAtlString& CAtlString::operator+=(char ch) {
    return *this += CAtlString(ch);
}

CAtlString operator+(const CAtlString& a, const CAtlString& b) {
    return CAtlString::Joined(a.GetString(), a.GetLength(), b.GetString(), b.GetLength());
}

CAtlString operator+(const CAtlString& a, const wchar_t* b) {
    return CAtlString::Joined(a.GetString(), a.GetLength(), b, CAtlString::LengthOf(b));
}

CAtlString operator+(const wchar_t* a, const CAtlString& b) {
    return CAtlString::Joined(a, CAtlString::LengthOf(a), b.GetString(), b.GetLength());
}

CAtlString operator+(const CAtlString& a, const char* b) {
    return a + CAtlString(b);
}

CAtlString operator+(const char* a, const CAtlString& b) {
    return CAtlString(a) + b;
}

CAtlString operator+(const CAtlString& a, wchar_t b) {
    return CAtlString::Joined(a.GetString(), a.GetLength(), &b, 1);
}

CAtlString operator+(wchar_t a, const CAtlString& b) {
    return CAtlString::Joined(&a, 1, b.GetString(), b.GetLength());
}

void CAtlString::Format(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    try {
        if (std::optional<CAtlString> text = Formatted(format, arguments))
            *this = std::move(*text);
    } catch (const std::bad_alloc&) {
        // The text stays as it was, as promised.
    }
    va_end(arguments);
}

void CAtlString::AppendFormat(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    try {
        if (const std::optional<CAtlString> text = Formatted(format, arguments))
            *this += *text;
    } catch (const std::bad_alloc&) {
        // The text stays as it was, as promised.
    }
    va_end(arguments);
}
