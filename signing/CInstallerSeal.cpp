// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "signing/CInstallerSeal.h"

#include "platform/files/FileSystem.h"
#include "platform/xml/XmlFile.h"
#include "signing/CPrivateFolder.h"

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

// Whether a trusted comment vouches for an installer of that name and of an offered version.
bool VouchesFor(std::string_view comment, const CAtlString& installer,
                const boost::function<bool(const CAtlString&)>& isOffered) {
    const auto file = OnlyWordAfter("file:", comment);
    const auto version = OnlyWordAfter("version:", comment);
    const CAtlString name = CVardoFilePath(installer).GetFileName();
    return !name.IsEmpty() && file && version && *file == CAtlStringA(name.GetString()).GetString() &&
           isOffered(CAtlString(version->c_str()));
}

}  // namespace

CInstallerSeal::CInstallerSeal(const CVardoFilePath& keyFile)
    : isRequired_(FileSystem::IsTaken(keyFile.GetFilePathString())) {
    const CAtlStringA bytes = ReadFileBytes(keyFile);
    key_ = CMinisignKey::Parse({bytes.begin(), bytes.end()});
}

bool CInstallerSeal::Accept(std::string_view signature, const CAtlString& installer,
                            const boost::function<bool(const CAtlString&)>& isOffered) {
    signature_ = CMinisignSignature::Parse(signature);
    return key_ && signature_ && signature_->IsBy(*key_) &&
           VouchesFor(signature_->GetTrustedComment(), installer, isOffered);
}

bool CInstallerSeal::IsOf(const CFileDescriptor& file) const {
    return key_ && signature_ && signature_->IsOf(file, *key_);
}

CVardoFilePath CInstallerSeal::Secure(const CVardoFilePath& fetched) const {
    CPrivateFolder folder;
    const CFileDescriptor file = folder.TakeIn(fetched);
    return IsOf(file) ? folder.Keep() : CVardoFilePath();
}
