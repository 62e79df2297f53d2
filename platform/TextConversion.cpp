// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/TextConversion.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <string>

namespace {

// One row of the Unicode standard's table of well-formed byte sequences (table 3-7): the lead bytes, the
// number of bytes, and the range of the second byte; every further byte is 80..BF.
struct Utf8Row {
    unsigned char firstLead;
    unsigned char lastLead;
    int bytes;
    unsigned char firstSecond;
    unsigned char lastSecond;
};

constexpr Utf8Row UTF8_ROWS[] = {
    {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF}, {0xE1, 0xEC, 3, 0x80, 0xBF},
    {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF}, {0xF0, 0xF0, 4, 0x90, 0xBF},
    {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

bool IsContinuation(unsigned char byte) {
    return (byte & 0xC0U) == 0x80U;
}

// The bytes of the well-formed sequence of more than one byte at the start of the text, or 0.
int SequenceLength(const unsigned char* bytes, std::ptrdiff_t available) {
    const auto* row = std::find_if(std::begin(UTF8_ROWS), std::end(UTF8_ROWS), [&](const Utf8Row& candidate) {
        return bytes[0] >= candidate.firstLead && bytes[0] <= candidate.lastLead;
    });
    if (row == std::end(UTF8_ROWS) || available < row->bytes)
        return 0;
    if (bytes[1] < row->firstSecond || bytes[1] > row->lastSecond)
        return 0;
    return std::all_of(bytes + 2, bytes + row->bytes, IsContinuation) ? row->bytes : 0;
}

wchar_t Assemble(const unsigned char* bytes, int count) {
    std::uint32_t code = bytes[0] & (0x7FU >> static_cast<unsigned>(count));
    for (int i = 1; i < count; ++i)
        code = (code << 6U) | (bytes[i] & 0x3FU);
    return static_cast<wchar_t>(code);
}

// U+FFFD stands for everything that UTF-8 has no sequence for.
std::uint32_t Encodable(wchar_t ch) {
    const auto code = static_cast<std::uint32_t>(ch);
    return code < 0x200000 ? code : 0xFFFD;
}

int EncodedBytes(std::uint32_t code) {
    if (code < 0x80)
        return 1;
    if (code < 0x800)
        return 2;
    return code < 0x10000 ? 3 : 4;
}

}  // namespace

int DecodeUtf8(const char* bytes, int length, wchar_t* out) {
    const auto* at = reinterpret_cast<const unsigned char*>(bytes);
    const unsigned char* end = at + length;
    wchar_t* next = out;
    while (at < end) {
        if (*at < 0x80) {
            *next++ = static_cast<wchar_t>(*at++);
            continue;
        }
        const int count = SequenceLength(at, end - at);
        if (count == 0)
            break;
        *next++ = Assemble(at, count);
        at += count;
    }
    return static_cast<int>(next - out);
}

int Utf8Size(const wchar_t* text, int length) {
    int size = 0;
    for (int i = 0; i < length; ++i)
        size += EncodedBytes(Encodable(text[i]));
    return size;
}

int EncodeUtf8(const wchar_t* text, int length, char* out) {
    char* next = out;
    for (int i = 0; i < length; ++i) {
        const std::uint32_t code = Encodable(text[i]);
        if (code >= 0xD800 && code <= 0xDFFF)
            break;
        const int count = EncodedBytes(code);
        if (count == 1) {
            *next++ = static_cast<char>(code);
            continue;
        }
        const std::uint32_t leadMark = (0xF00U >> static_cast<unsigned>(count)) & 0xF0U;
        for (int shift = 6 * (count - 1); shift >= 0; shift -= 6) {
            const bool lead = shift == 6 * (count - 1);
            const std::uint32_t bits = code >> static_cast<unsigned>(shift);
            *next++ = static_cast<char>(lead ? leadMark | bits : 0x80U | (bits & 0x3FU));
        }
    }
    return static_cast<int>(next - out);
}

std::unique_ptr<char[]> DuplicateAsUtf8(const wchar_t* text) {
    const int length = text ? static_cast<int>(std::wcslen(text)) : 0;
    auto copy = std::make_unique<char[]>(static_cast<std::size_t>(Utf8Size(text, length)) + 1);
    copy[static_cast<std::size_t>(EncodeUtf8(text, length, copy.get()))] = '\0';
    return copy;
}

int MultiByteToWideChar(unsigned /*codepage*/, unsigned /*flags*/, const char* source, int sourceLength,
                        wchar_t* out, int room) {
    if (!source || sourceLength == 0 || sourceLength < -1)
        return 0;
    const std::string text =
        sourceLength < 0 ? std::string(source)
                         : std::string(source, strnlen(source, static_cast<std::size_t>(sourceLength)));
    if (text.empty())
        return 0;
    std::wstring wide(text.size(), L'\0');
    const char* next = text.c_str();
    std::mbstate_t state{};
    const std::size_t count = std::mbsrtowcs(wide.data(), &next, wide.size() + 1, &state);
    if (count == static_cast<std::size_t>(-1))
        return 0;
    if (room == 0)
        return static_cast<int>(count) + 1;
    std::copy_n(wide.data(), count, out);
    return static_cast<int>(count);
}

int WideCharToMultiByte(unsigned /*codepage*/, unsigned /*flags*/, const wchar_t* source, int sourceLength,
                        char* out, int room, const char* /*defaultChar*/, bool* usedDefault) {
    if (usedDefault)
        *usedDefault = false;
    if (!source || sourceLength == 0 || sourceLength < -1)
        return 0;
    const std::wstring text =
        sourceLength < 0 ? std::wstring(source)
                         : std::wstring(source, wcsnlen(source, static_cast<std::size_t>(sourceLength)));
    std::string narrow(text.size() * MB_CUR_MAX + 1, '\0');
    const wchar_t* next = text.c_str();
    std::mbstate_t state{};
    const std::size_t count = std::wcsrtombs(narrow.data(), &next, narrow.size(), &state);
    if (count == static_cast<std::size_t>(-1))
        return 0;
    if (room == 0)
        return static_cast<int>(count) + 1;
    const auto written = std::min(count, static_cast<std::size_t>(std::max(room, 0)));
    std::copy_n(narrow.data(), written, out);
    return static_cast<int>(written);
}
