// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/text/TextConversion.h"

#include <bit>
#include <boost/locale/utf.hpp>
#include <iterator>

namespace utf = boost::locale::utf;

using Utf8 = utf::utf_traits<char>;

std::wstring DecodeUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (const auto* next = bytes.begin(); next != bytes.end();) {
        const utf::code_point code = Utf8::decode(next, bytes.end());
        if (!utf::is_valid_codepoint(code))
            break;
        text += static_cast<wchar_t>(code);
    }
    return text;
}

std::string EncodeUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t ch : text) {
        const auto code = std::bit_cast<utf::code_point>(ch);
        if (code >= 0xD800 && code <= 0xDFFF)
            break;
        Utf8::encode(code < 0x200000 ? code : 0xFFFD, std::back_inserter(bytes));
    }
    return bytes;
}
