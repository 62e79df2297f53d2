// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/CAtlString.h"

#include <boost/container/small_vector.hpp>
#include <cerrno>
#include <cstdarg>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "platform/CAtlStringA.h"
#include "platform/TextConversion.h"

namespace {

// In characters. A text that does not fit is formatted once more for each doubling, and the C library takes
// longer to throw away what does not fit than to write it: so nearly every text shall fit at once. Only what
// is written of it is ever touched.
constexpr int FIRST_FORMAT_CAPACITY = 2048;

// Below the surrogates, where UTF-16 has the same number for the character.
bool IsOneUtf16Unit(wchar_t ch) {
    return ch >= 0 && ch < 0xD800;
}

int LengthOfBytes(const char* bytes) {
    return bytes ? static_cast<int>(std::strlen(bytes)) : 0;
}

CAtlString Decoded(const char* bytes, int length) {
    CAtlString text;
    if (length <= 0)
        return text;
    wchar_t* const out = text.GetBuffer(length);
    // Most texts are ASCII: one pass, which widens many characters at once.
    if (WidenAscii(bytes, length, out)) {
        text.ReleaseBuffer(length);
        return text;
    }
    // There are fewer characters than bytes, and a text has no more room than it needs.
    return CAtlString(out, DecodeUtf8(bytes, length, out));
}

// The format with every "%s" as "%ls", 0-terminated. Formats are short: none needs an allocation of its own.
using WideFormat = boost::container::small_vector<wchar_t, 64>;

WideFormat WithWideArguments(const wchar_t* format) {
    // Room for a format of nothing but "%s", made once: push_back looks for room at each character.
    const std::size_t length = std::wcslen(format);
    WideFormat wide(length + length / 2 + 1, boost::container::default_init);
    wchar_t* out = wide.data();
    for (; *format; ++format) {
        *out++ = *format;
        if (format[0] == L'%' && format[1] == L's')
            *out++ = L'l';
    }
    *out = L'\0';
    return wide;
}

// Whether the text fits into a buffer of capacity characters. What a too small buffer and an encoding error
// have in common is the result; what tells them apart is errno.
bool TryFormat(wchar_t* buffer, int capacity, const WideFormat& format, std::va_list arguments) {
    std::va_list copy;
    va_copy(copy, arguments);
    errno = 0;
    const int written = std::vswprintf(buffer, static_cast<std::size_t>(capacity), format.data(), copy);
    va_end(copy);
    return written >= 0 && written < capacity;
}

// Nothing when formatting fails.
std::optional<CAtlString> Formatted(const wchar_t* format, std::va_list arguments) {
    const WideFormat wideFormat = WithWideArguments(format ? format : L"");
    // Nearly every text fits here and costs one allocation, its own.
    wchar_t first[FIRST_FORMAT_CAPACITY];
    if (TryFormat(first, FIRST_FORMAT_CAPACITY, wideFormat, arguments))
        return CAtlString(first);
    for (int capacity = 2 * FIRST_FORMAT_CAPACITY; capacity <= CAtlString::MAX_FORMATTED && errno != EILSEQ;
         capacity *= 2) {
        std::vector<wchar_t> buffer(static_cast<std::size_t>(capacity));
        if (TryFormat(buffer.data(), capacity, wideFormat, arguments))
            return CAtlString(buffer.data());
    }
    return std::nullopt;
}

}  // namespace

// Not inline, and the faster for it: a locked instruction right behind a single store waits for that store,
// and some 2 ns less when the call has stored its way back as well.
CAtlString::CAtlString(const CAtlString&) = default;

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
