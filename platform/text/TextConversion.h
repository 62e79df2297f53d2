// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Conversions between wide (UTF-32) and narrow (UTF-8) text, for the string classes and the file system's
// calls. All may be called from any thread; none reports an error.
#pragma once

#include <string>
#include <string_view>

// Only well-formed sequences (Unicode, table 3-7) count; decoding stops at the first other one.
std::wstring DecodeUtf8(std::string_view bytes);

// Characters from U+200000 on come out as U+FFFD. Encoding stops at a surrogate (U+D800 to U+DFFF); what came
// before it is kept.
std::string EncodeUtf8(std::wstring_view text);
