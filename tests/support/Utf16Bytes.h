// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Strings files for tests.
#pragma once

#include <string>

// The text as UTF-16 behind a byte order mark.
inline std::string Utf16Bytes(const std::u16string& text, bool bigEndian = false) {
    constexpr char16_t MARK = 0xFEFF;
    std::string bytes;
    for (const char16_t unit : MARK + text) {
        const char low = static_cast<char>(unit & 0xFF);
        const char high = static_cast<char>(unit >> 8);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}
