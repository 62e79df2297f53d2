// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "signing/CMinisignSignature.h"

#include "platform/files/FileSystem.h"

#include <QDateTime>
#include <algorithm>

#include <sodium.h>

namespace {

using Bytes = std::vector<unsigned char>;

constexpr std::size_t BLOCK_BYTES = std::size_t{64} * 1024;

// The next bytes of a file, at most count; fewer only at its end.
Bytes ReadNext(const CFileDescriptor& file, std::size_t count) {
    Bytes block(count);
    char* const buffer = reinterpret_cast<char*>(block.data());
    block.resize(static_cast<std::size_t>(FileSystem::ReadFully(file, buffer, static_cast<off_t>(count))));
    return block;
}

// BLAKE2b with 64 bytes (RFC 7693) of all bytes that are added.
class CHash {
public:
    CHash() { crypto_generichash_init(&state_, nullptr, 0, crypto_generichash_BYTES_MAX); }

    void Add(std::span<const unsigned char> bytes) {
        crypto_generichash_update(&state_, bytes.data(), bytes.size());
    }
    // To be called once, at the end.
    Bytes Finish() {
        Bytes hash(crypto_generichash_BYTES_MAX);
        crypto_generichash_final(&state_, hash.data(), hash.size());
        return hash;
    }

private:
    crypto_generichash_state state_{};
};

}  // namespace

std::optional<CMinisignSignature> CMinisignSignature::Parse(std::string_view bytes) {
    CMinisignSignature parsed;
    if (bytes.size() > MAX_FILE_BYTES || !MinisignFormat::CutComment(bytes, "untrusted comment:"))
        return std::nullopt;
    // The algorithm, then the key's number, then the signature.
    std::array<unsigned char, 2 + sizeof parsed.keyId_ + sizeof parsed.signature_> content{};
    if (!MinisignFormat::DecodeBase64(MinisignFormat::CutLine(bytes), content) || content[0] != 'E' ||
        content[1] != 'D')
        return std::nullopt;
    const auto comment = MinisignFormat::CutComment(bytes, "trusted comment: ");
    if (!comment || !MinisignFormat::DecodeBase64(MinisignFormat::CutLine(bytes), parsed.globalSignature_) ||
        !bytes.empty())
        return std::nullopt;
    std::copy_n(content.begin() + 2, parsed.keyId_.size(), parsed.keyId_.begin());
    std::copy_n(content.begin() + 2 + sizeof parsed.keyId_, parsed.signature_.size(),
                parsed.signature_.begin());
    parsed.trustedComment_ = *comment;
    return parsed;
}

bool CMinisignSignature::IsBy(const CMinisignKey& key) const {
    Bytes message(signature_.begin(), signature_.end());
    message.insert(message.end(), trustedComment_.begin(), trustedComment_.end());
    return keyId_ == key.GetId() && key.HasSigned(message, globalSignature_);
}

bool CMinisignSignature::IsOf(const CFileDescriptor& file, const CMinisignKey& key) const {
    if (!file.IsOpen() || !IsBy(key))
        return false;
    CHash hash;
    for (Bytes block = ReadNext(file, BLOCK_BYTES); !block.empty(); block = ReadNext(file, BLOCK_BYTES))
        hash.Add(block);
    return key.HasSigned(hash.Finish(), signature_);
}

bool CMinisignSignature::IsOf(std::string_view contents, const CMinisignKey& key) const {
    if (!IsBy(key))
        return false;
    CHash hash;
    hash.Add({reinterpret_cast<const unsigned char*>(contents.data()), contents.size()});
    return key.HasSigned(hash.Finish(), signature_);
}

std::vector<std::string> CMinisignSignature::GetWords(std::string_view beginning) const {
    constexpr std::string_view SEPARATORS = " \t";
    std::vector<std::string> found;
    for (std::string_view text = trustedComment_; !text.empty();) {
        const std::string_view word = text.substr(0, text.find_first_of(SEPARATORS));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        if (word.starts_with(beginning))
            found.emplace_back(word.substr(beginning.size()));
    }
    return found;
}

std::optional<std::string> CMinisignSignature::GetOnlyWord(std::string_view beginning) const {
    const auto words = GetWords(beginning);
    return words.size() == 1 ? std::optional(words.front()) : std::nullopt;
}

QDate TodayInUtc() {
    return QDateTime::currentDateTimeUtc().date();
}

QDate ReadLastDay(const std::string& text) {
    return QDate::fromString(QString::fromStdString(text), QStringLiteral("yyyyMMdd"));
}

bool IsOver(const QDate& lastDay, const QDate& today) {
    return today > lastDay.addDays(1);
}
