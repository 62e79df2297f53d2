// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Conversions between wide (UTF-32) and narrow (UTF-8) text, for the string classes and the file system's
// calls. All may be called from any thread; none reports an error.
#pragma once

#include <memory>
#include <string>
#include <string_view>

// Only well-formed sequences (Unicode, table 3-7) count; decoding stops at the first other one.
std::wstring DecodeUtf8(std::string_view bytes);

// The size in bytes of length characters as UTF-8. Characters from U+200000 on count as U+FFFD.
int Utf8Size(const wchar_t* text, int length);

// Encodes length characters as UTF-8 into out, which must have room for Utf8Size bytes, and returns how many
// bytes were written. Encoding stops at a surrogate (U+D800 to U+DFFF); what came before it is kept. No
// terminator is written.
int EncodeUtf8(const wchar_t* text, int length, char* out);

// A 0-terminated UTF-8 copy of a 0-terminated wide text (null counts as empty).
std::unique_ptr<char[]> DuplicateAsUtf8(const wchar_t* text);
