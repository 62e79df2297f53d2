// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What minisign's public key files and signature files have in common (minisign(1); the format is described
// at https://jedisct1.github.io/minisign/).
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

// Pure functions over bytes that may have been written by anyone. Any thread.
namespace MinisignFormat {

// An Ed25519 signature (RFC 8032).
using Signature = std::array<unsigned char, 64>;
// Says which pair of keys a signature belongs to. Not a secret, and no proof.
using KeyId = std::array<unsigned char, 8>;

// The number as the tool shows it: a 64-bit number, least byte first, as 16 hexadecimal digits.
std::string ToText(const KeyId& id);

// Cuts the first line from text; it ends with LF, CR LF or the text.
std::string_view CutLine(std::string_view& text);

// Cuts the first line from text and gives what follows beginning in it; nothing when it begins differently or
// holds a control character other than a tab.
std::optional<std::string_view> CutComment(std::string_view& text, std::string_view beginning);

// Decodes base64 (RFC 4648, 4, with its padding) into out, which it must fill exactly.
bool DecodeBase64(std::string_view text, std::span<unsigned char> out);

}  // namespace MinisignFormat
