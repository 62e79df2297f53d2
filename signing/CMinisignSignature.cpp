// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "signing/CMinisignSignature.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <algorithm>

namespace {

// BLAKE2b with 64 bytes (RFC 7693).
constexpr auto HASH = QCryptographicHash::Blake2b_512;

std::span<const unsigned char> Bytes(const QByteArray& bytes) {
    return {reinterpret_cast<const unsigned char*>(bytes.constData()),
            static_cast<std::size_t>(bytes.size())};
}

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
    std::vector<unsigned char> message(signature_.begin(), signature_.end());
    message.insert(message.end(), trustedComment_.begin(), trustedComment_.end());
    return keyId_ == key.GetId() && key.HasSigned(message, globalSignature_);
}

bool CMinisignSignature::IsOf(const CFileDescriptor& file, const CMinisignKey& key) const {
    if (!file.IsOpen() || !IsBy(key))
        return false;
    QFile contents;
    QCryptographicHash hash(HASH);
    return contents.open(file.Get(), QIODevice::ReadOnly) && hash.addData(&contents) &&
           key.HasSigned(Bytes(hash.result()), signature_);
}

bool CMinisignSignature::IsOf(std::string_view contents, const CMinisignKey& key) const {
    return IsBy(key) && key.HasSigned(Bytes(QCryptographicHash::hash(contents, HASH)), signature_);
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
    return QDate::fromString(QString::fromStdString(text), "yyyyMMdd");
}

bool IsOver(const QDate& lastDay, const QDate& today) {
    return today > lastDay.addDays(1);
}
