// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The public half of a pair of keys that the minisign tool made.
#pragma once

#include "signing/MinisignFormat.h"

#include <vector>

// A value; any thread.
class CMinisignKey {
public:
    // A larger file is not a public key file; a key has some 110 bytes.
    static constexpr std::size_t MAX_FILE_BYTES = std::size_t{4} * 1024;

    // Reads the bytes of a public key file: for each key a line of comment and the key in base64. Empty when
    // the bytes hold anything else. Any bytes may come.
    static std::vector<CMinisignKey> ParseAll(std::string_view bytes);

    const MinisignFormat::KeyId& GetId() const { return id_; }
    // Whether the secret half made this signature for message.
    bool HasSigned(std::span<const unsigned char> message, const MinisignFormat::Signature& signature) const;

private:
    CMinisignKey() = default;
    // Cuts the lines of the first key from bytes.
    static std::optional<CMinisignKey> Cut(std::string_view& bytes);

    MinisignFormat::KeyId id_{};
    std::array<unsigned char, 32> key_{};
};
