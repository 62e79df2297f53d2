// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The public half of a pair of keys that the minisign tool made.
#pragma once

#include "signing/MinisignFormat.h"

// A value; any thread.
class CMinisignKey {
public:
    // A larger public key file is none; real ones have some 110 bytes.
    static constexpr std::size_t MAX_FILE_BYTES = std::size_t{4} * 1024;

    // Reads the bytes of a public key file: a line of comment and the key in base64, and nothing else.
    // Nothing comes out of bytes that are anything else. Any bytes may come.
    static std::optional<CMinisignKey> Parse(std::string_view bytes);

    const MinisignFormat::KeyId& GetId() const { return id_; }
    // Whether the secret half made this signature for message.
    bool HasSigned(std::span<const unsigned char> message, const MinisignFormat::Signature& signature) const;

private:
    CMinisignKey() = default;

    MinisignFormat::KeyId id_{};
    std::array<unsigned char, 32> key_{};
};
