// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Makes strings files for tests.
#pragma once

#include <string>

// The text as UTF-16, after a byte order mark.
inline std::string Utf16Bytes(const std::u16string& text, bool bigEndian = false) {
    std::string bytes;
    for (const char16_t unit : u'\xFEFF' + text)
        for (const int shift : {bigEndian ? 8 : 0, bigEndian ? 0 : 8})
            bytes += static_cast<char>(unit >> shift);
    return bytes;
}
