// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/text/TextConversion.h"

#include <bit>
#include <cstddef>
#include <cstdint>

namespace {

bool IsSurrogate(std::uint32_t code) {
    return code >= 0xD800 && code <= 0xDFFF;
}

// The number of bytes that a character below U+200000 has in UTF-8.
std::size_t SequenceLength(std::uint32_t code) {
    if (code < 0x80)
        return 1;
    if (code < 0x800)
        return 2;
    return code < 0x10000 ? 3 : 4;
}

// Reads the well-formed sequence at the start of the bytes and returns its length; 0 when there is no such
// sequence. There must be at least one byte.
std::size_t ReadSequence(std::string_view bytes, std::uint32_t& code) {
    const auto lead = static_cast<std::uint8_t>(bytes[0]);
    code = lead;
    if (lead < 0x80)
        return 1;
    // The first byte of a longer sequence begins with as many ones as the sequence has bytes.
    const auto length = static_cast<std::size_t>(std::countl_one(lead));
    if (length < 2 || length > 4 || length > bytes.size())
        return 0;
    code &= 0x7FU >> length;
    for (const char each : bytes.substr(1, length - 1)) {
        const auto byte = static_cast<std::uint8_t>(each);
        if ((byte & 0xC0U) != 0x80)
            return 0;
        code = (code << 6U) | (byte & 0x3FU);
    }
    const bool isWellFormed = length == SequenceLength(code) && code <= 0x10FFFF && !IsSurrogate(code);
    return isWellFormed ? length : 0;
}

// The character's number, or that of U+FFFD for a character that UTF-8 has no sequence for.
std::uint32_t CodeOf(wchar_t ch) {
    // NOLINTNEXTLINE(bugprone-signed-char-misuse): wchar_t has 32 bits, and a negative one has no sequence.
    const auto code = static_cast<std::uint32_t>(ch);
    return code < 0x200000 ? code : 0xFFFD;
}

// Appends the sequence for a character below U+200000.
void AppendSequence(std::uint32_t code, std::string& bytes) {
    static constexpr std::uint32_t LEADS[] = {0, 0, 0xC0, 0xE0, 0xF0};
    const std::size_t length = SequenceLength(code);
    std::size_t shift = 6 * (length - 1);
    bytes += static_cast<char>(LEADS[length] | (code >> shift));
    while (shift > 0) {
        shift -= 6;
        bytes += static_cast<char>(0x80U | ((code >> shift) & 0x3FU));
    }
}

}  // namespace

std::wstring DecodeUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        std::uint32_t code = 0;
        const std::size_t length = ReadSequence(bytes, code);
        if (length == 0)
            break;
        text += static_cast<wchar_t>(code);
        bytes.remove_prefix(length);
    }
    return text;
}

std::string EncodeUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t ch : text) {
        if (IsSurrogate(CodeOf(ch)))
            break;
        AppendSequence(CodeOf(ch), bytes);
    }
    return bytes;
}
