// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "signing/CMinisignKey.h"

#include <algorithm>

#include <sodium.h>

std::vector<CMinisignKey> CMinisignKey::ParseAll(std::string_view bytes) {
    std::vector<CMinisignKey> keys;
    if (bytes.size() > MAX_FILE_BYTES)
        return {};
    while (!bytes.empty()) {
        const auto key = Cut(bytes);
        if (!key)
            return {};
        keys.push_back(*key);
    }
    return keys;
}

std::optional<CMinisignKey> CMinisignKey::Cut(std::string_view& bytes) {
    if (!MinisignFormat::CutComment(bytes, "untrusted comment:"))
        return std::nullopt;
    CMinisignKey key;
    // The algorithm, "Ed", then the key's number, then the key.
    std::array<unsigned char, 2 + sizeof key.id_ + sizeof key.key_> content{};
    if (!MinisignFormat::DecodeBase64(MinisignFormat::CutLine(bytes), content) || content[0] != 'E' ||
        content[1] != 'd')
        return std::nullopt;
    std::copy_n(content.begin() + 2, key.id_.size(), key.id_.begin());
    std::copy_n(content.begin() + 2 + sizeof key.id_, key.key_.size(), key.key_.begin());
    return key;
}

bool CMinisignKey::HasSigned(std::span<const unsigned char> message,
                             const MinisignFormat::Signature& signature) const {
    return sodium_init() >= 0 &&
           crypto_sign_verify_detached(signature.data(), message.data(), message.size(), key_.data()) == 0;
}
