// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Hexadecimal digits, for language IDs and for the escapes of strings files.
#pragma once

// The value of 0-9, A-F or a-f, -1 for any other character. Independent of the locale.
constexpr int HexDigit(char32_t ch) {
    if (ch >= U'0' && ch <= U'9')
        return static_cast<int>(ch - U'0');
    if (ch >= U'A' && ch <= U'F')
        return static_cast<int>(ch - U'A') + 10;
    return ch >= U'a' && ch <= U'f' ? static_cast<int>(ch - U'a') + 10 : -1;
}
