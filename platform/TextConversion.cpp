// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/TextConversion.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <string>
#include <type_traits>

namespace {

// The loops of the next two have neither branches nor a way out in the middle: the compiler makes vector
// operations of them, which take a tenth of the time.
template <typename From, typename To>
bool CopyAscii(const From* text, int length, To* out) {
    using Unsigned = std::make_unsigned_t<From>;
    Unsigned all = 0;
    for (int i = 0; i < length; ++i) {
        const auto code = std::bit_cast<Unsigned>(text[i]);
        all = static_cast<Unsigned>(all | code);
        out[i] = static_cast<To>(code);
    }
    return all < 0x80;
}

// How many characters have a number from first on.
int CountFrom(std::uint32_t first, const wchar_t* text, int length) {
    int count = 0;
    for (int i = 0; i < length; ++i)
        count += static_cast<std::uint32_t>(text[i]) >= first ? 1 : 0;
    return count;
}

bool IsContinuation(unsigned char byte) {
    return (byte & 0xC0U) == 0x80U;
}

bool IsBetween(unsigned char byte, unsigned char first, unsigned char last) {
    return byte >= first && byte <= last;
}

// The length that a lead byte announces; 0 when no sequence of more than one byte begins with it.
int AnnouncedLength(unsigned char lead) {
    if (IsBetween(lead, 0xC2, 0xDF))
        return 2;
    if (IsBetween(lead, 0xE0, 0xEF))
        return 3;
    return IsBetween(lead, 0xF0, 0xF4) ? 4 : 0;
}

// Whether a second byte may follow a lead byte of a sequence of three or four: not every one that continues a
// sequence may, or there would be overlong forms, surrogates and characters above U+10FFFF.
bool MayFollow(unsigned char lead, unsigned char second) {
    switch (lead) {
        case 0xE0:
            return IsBetween(second, 0xA0, 0xBF);
        case 0xED:
            return IsBetween(second, 0x80, 0x9F);
        case 0xF0:
            return IsBetween(second, 0x90, 0xBF);
        case 0xF4:
            return IsBetween(second, 0x80, 0x8F);
        default:
            return IsContinuation(second);
    }
}

// The bytes of the well-formed sequence of more than one byte at the start of the text, or 0.
int SequenceLength(const unsigned char* bytes, std::ptrdiff_t available) {
    const int count = AnnouncedLength(bytes[0]);
    if (count == 0 || available < count || !MayFollow(bytes[0], bytes[1]))
        return 0;
    if (count > 2 && !IsContinuation(bytes[2]))
        return 0;
    return count > 3 && !IsContinuation(bytes[3]) ? 0 : count;
}

wchar_t Assemble(const unsigned char* bytes, int count) {
    std::uint32_t code = bytes[0] & (0x7FU >> static_cast<unsigned>(count));
    for (int i = 1; i < count; ++i)
        code = (code << 6U) | (bytes[i] & 0x3FU);
    return static_cast<wchar_t>(code);
}

// The byte that continues a sequence and holds six bits of code, from bit shift on.
char Continuation(std::uint32_t code, unsigned shift) {
    return static_cast<char>(0x80U | ((code >> shift) & 0x3FU));
}

char* EncodeTwo(std::uint32_t code, char* out) {
    out[0] = static_cast<char>(0xC0U | (code >> 6U));
    out[1] = Continuation(code, 0);
    return out + 2;
}

char* EncodeThree(std::uint32_t code, char* out) {
    out[0] = static_cast<char>(0xE0U | (code >> 12U));
    out[1] = Continuation(code, 6);
    out[2] = Continuation(code, 0);
    return out + 3;
}

// U+FFFD stands for everything that UTF-8 has no sequence for.
char* EncodeFour(std::uint32_t code, char* out) {
    if (code >= 0x200000)
        return EncodeThree(0xFFFD, out);
    out[0] = static_cast<char>(0xF0U | (code >> 18U));
    out[1] = Continuation(code, 12);
    out[2] = Continuation(code, 6);
    out[3] = Continuation(code, 0);
    return out + 4;
}

}  // namespace

bool WidenAscii(const char* bytes, int length, wchar_t* out) {
    return CopyAscii(bytes, length, out);
}

bool NarrowAscii(const wchar_t* text, int length, char* out) {
    return CopyAscii(text, length, out);
}

int DecodeUtf8(const char* bytes, int length, wchar_t* out) {
    const auto* at = reinterpret_cast<const unsigned char*>(bytes);
    const auto* end = at + length;
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
    const int beyondThree = CountFrom(0x10000, text, length);
    const int asThree = beyondThree > 0 ? CountFrom(0x200000, text, length) : 0;
    return length + CountFrom(0x80, text, length) + CountFrom(0x800, text, length) + beyondThree - asThree;
}

int EncodeUtf8(const wchar_t* text, int length, char* out) {
    char* next = out;
    for (const wchar_t* at = text; at < text + length; ++at) {
        const auto code = std::bit_cast<std::uint32_t>(*at);
        if (code < 0x80)
            *next++ = static_cast<char>(code);
        else if (code < 0x800)
            next = EncodeTwo(code, next);
        else if (code >= 0x10000)
            next = EncodeFour(code, next);
        else if (code < 0xD800 || code > 0xDFFF)
            next = EncodeThree(code, next);
        else
            break;
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
