// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "signing/MinisignFormat.h"

#include <algorithm>

#include <sodium.h>

namespace {

bool IsControl(char byte) {
    return (static_cast<unsigned char>(byte) < ' ' && byte != '\t') || byte == '\x7F';
}

}  // namespace

namespace MinisignFormat {

std::string ToText(const KeyId& id) {
    std::string text;
    for (auto byte = id.rbegin(); byte != id.rend(); ++byte)
        for (const int digit : {*byte >> 4, *byte & 0xF})
            text += "0123456789ABCDEF"[digit];
    return text;
}

std::string_view CutLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

std::optional<std::string_view> CutComment(std::string_view& text, std::string_view beginning) {
    std::string_view line = CutLine(text);
    if (!line.starts_with(beginning) || std::any_of(line.begin(), line.end(), IsControl))
        return std::nullopt;
    line.remove_prefix(beginning.size());
    return line;
}

bool DecodeBase64(std::string_view text, std::span<unsigned char> out) {
    std::size_t decoded = 0;
    const char* end = nullptr;
    return sodium_base642bin(out.data(), out.size(), text.data(), text.size(), nullptr, &decoded, &end,
                             sodium_base64_VARIANT_ORIGINAL) == 0 &&
           decoded == out.size() && end == text.data() + text.size();
}

}  // namespace MinisignFormat
