// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Conversions between wide (UTF-32) and narrow text, for the string classes and for the C library's boundary.
// All may be called from any thread; none reports an error.
#pragma once

#include <memory>

// Each character as one character of the other width, of which out must have room for length. Answers whether
// all were below U+0080: then this is all that UTF-8 asks for; otherwise what was written is worth nothing.
bool WidenAscii(const char* bytes, int length, wchar_t* out);
bool NarrowAscii(const wchar_t* text, int length, char* out);

// Decodes at most length bytes of UTF-8 into out, which must have room for length characters, and returns how
// many characters were written. Only the well-formed sequences of the Unicode standard (table 3-7) count;
// decoding stops at the first other one. No terminator is written.
int DecodeUtf8(const char* bytes, int length, wchar_t* out);

// The size in bytes of length characters as UTF-8. Characters from U+200000 on count as U+FFFD.
int Utf8Size(const wchar_t* text, int length);

// Encodes length characters as UTF-8 into out, which must have room for Utf8Size bytes, and returns how many
// bytes were written. Encoding stops at a surrogate (U+D800 to U+DFFF); what came before it is kept. No
// terminator is written.
int EncodeUtf8(const wchar_t* text, int length, char* out);

// A 0-terminated UTF-8 copy of a 0-terminated wide text (null counts as empty), for calls into the file
// system.
std::unique_ptr<char[]> DuplicateAsUtf8(const wchar_t* text);

// Conversion by the C locale (mbsrtowcs). codepage and flags are ignored. A sourceLength of -1 means up to
// the terminating 0. With room 0 the answer is the size needed, in characters, terminator included; otherwise
// the whole source is converted into out, which must hold at least sourceLength characters, and the answer is
// the number written. 0 for a null or empty source, a sourceLength of 0 or below -1, and a source that the
// locale cannot decode.
int MultiByteToWideChar(unsigned codepage, unsigned flags, const char* source, int sourceLength, wchar_t* out,
                        int room);

// Conversion by the C locale (wcsrtombs). codepage, flags and defaultChar are ignored; *usedDefault becomes
// false when the pointer is given. A sourceLength of -1 means up to the terminating 0. With room 0 the answer
// is the size needed, in bytes, terminator included; otherwise at most room bytes are written and their
// number is the answer. 0 for a null source, a sourceLength of 0 or below -1, and a source that the locale
// cannot encode.
int WideCharToMultiByte(unsigned codepage, unsigned flags, const wchar_t* source, int sourceLength, char* out,
                        int room, const char* defaultChar, bool* usedDefault);
