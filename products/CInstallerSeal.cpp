// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/CInstallerSeal.h"

#include "platform/CPrivateFolder.h"
#include "platform/FileSystem.h"
#include "platform/XmlFile.h"

namespace {

// What follows beginning in the one word of text that begins so; nothing when no word does, or several do.
std::optional<std::string> OnlyWordAfter(std::string_view beginning, std::string_view text) {
    constexpr std::string_view SEPARATORS = " \t";
    std::optional<std::string> found;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find_first_of(SEPARATORS));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        if (!word.starts_with(beginning))
            continue;
        if (found)
            return std::nullopt;
        found = word.substr(beginning.size());
    }
    return found;
}

bool Names(std::string_view comment, const CAtlString& installer, const CVersionString& version) {
    const auto file = OnlyWordAfter("file:", comment);
    const auto signedVersion = OnlyWordAfter("version:", comment);
    const CAtlString name = CVardoFilePath(installer).GetFileName();
    return !name.IsEmpty() && file && signedVersion && *file == CAtlStringA(name.GetString()).GetString() &&
           CVersionString(CAtlString(signedVersion->c_str())).IsEqual(version);
}

}  // namespace

CInstallerSeal::CInstallerSeal(const CVardoFilePath& keyFile)
    : isRequired_(FileSystem::IsTaken(keyFile.GetFilePathString())) {
    const CAtlStringA bytes = ReadFileBytes(keyFile);
    key_ = CMinisignKey::Parse({bytes.begin(), bytes.end()});
}

bool CInstallerSeal::Accept(std::string_view signature, const CAtlString& installer,
                            const CVersionString& version) {
    signature_ = CMinisignSignature::Parse(signature);
    return key_ && signature_ && signature_->IsBy(*key_) &&
           Names(signature_->GetTrustedComment(), installer, version);
}

bool CInstallerSeal::IsOf(const CFileDescriptor& file) const {
    return key_ && signature_ && signature_->IsOf(file, *key_);
}

CVardoFilePath CInstallerSeal::Secure(const CVardoFilePath& fetched) const {
    CPrivateFolder folder;
    const CFileDescriptor file = folder.TakeIn(fetched);
    return IsOf(file) ? folder.Keep() : CVardoFilePath();
}
