// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The C library's view of wide and narrow characters, under one name each.
#pragma once

#include <cctype>
#include <cstring>
#include <cwchar>
#include <cwctype>

#include <strings.h>

// The C library's functions for one character type, under one name each.
template <typename Char>
struct TextFunctions;

template <>
struct TextFunctions<wchar_t> {
    static int CompareNoCase(const wchar_t* a, const wchar_t* b) { return ::wcscasecmp(a, b); }
    static int Compare(const wchar_t* a, const wchar_t* b) { return ::wcscmp(a, b); }
    static bool IsSpace(wchar_t ch) { return std::iswspace(static_cast<wint_t>(ch)) != 0; }
    static wchar_t Upper(wchar_t ch) { return static_cast<wchar_t>(std::towupper(static_cast<wint_t>(ch))); }
    static wchar_t Lower(wchar_t ch) { return static_cast<wchar_t>(std::towlower(static_cast<wint_t>(ch))); }
};

template <>
struct TextFunctions<char> {
    static int CompareNoCase(const char* a, const char* b) { return ::strcasecmp(a, b); }
    static int Compare(const char* a, const char* b) { return std::strcmp(a, b); }
    static bool IsSpace(char ch) { return std::isspace(static_cast<unsigned char>(ch)) != 0; }
    static char Upper(char ch) { return static_cast<char>(std::toupper(static_cast<unsigned char>(ch))); }
    static char Lower(char ch) { return static_cast<char>(std::tolower(static_cast<unsigned char>(ch))); }
};
