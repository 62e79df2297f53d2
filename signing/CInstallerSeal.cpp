// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "signing/CInstallerSeal.h"

#include "signing/CPrivateFolder.h"
#include "signing/LastDay.h"

#include <QByteArray>

namespace {

// Without the word only an empty argument is vouched for.
bool VouchesForArgument(const CMinisignSignature& signature, const CAtlString& argument) {
    const auto words = signature.GetWords("argument:");
    if (words.empty())
        return argument.IsEmpty();
    const QByteArray decoded = QByteArray::fromPercentEncoding(QByteArray::fromStdString(words.front()));
    return words.size() == 1 && CAtlString(decoded.constData()).Compare(argument) == 0;
}

bool IsValidOn(const CMinisignSignature& signature, const QDate& today) {
    const auto words = signature.GetWords("until:");
    if (words.empty())
        return true;
    const QDate lastDay = ReadLastDay(words.front());
    return words.size() == 1 && lastDay.isValid() && !IsOver(lastDay, today);
}

bool VouchesFor(const CMinisignSignature& signature, const CInstallerSeal::Offer& offer) {
    const auto file = signature.GetOnlyWord("file:");
    const auto version = signature.GetOnlyWord("version:");
    const CAtlString name = CVardoFilePath(offer.file).GetFileName();
    return !name.IsEmpty() && file && version && *file == CAtlStringA(name.GetString()).GetString() &&
           offer.isVersion(CAtlString(version->c_str())) && VouchesForArgument(signature, offer.argument) &&
           IsValidOn(signature, offer.today);
}

}  // namespace

bool CInstallerSeal::Accept(std::string_view signature, const Offer& offer) {
    signature_ = CMinisignSignature::Parse(signature);
    return signature_ && keys_.KeyOf(*signature_) && VouchesFor(*signature_, offer);
}

bool CInstallerSeal::IsOf(const CFileDescriptor& file) const {
    if (!signature_)
        return false;
    const CMinisignKey* key = keys_.KeyOf(*signature_);
    return key && signature_->IsOf(file, *key);
}

CVardoFilePath CInstallerSeal::Secure(const CVardoFilePath& fetched) const {
    CPrivateFolder folder;
    const CFileDescriptor file = folder.TakeIn(fetched);
    return IsOf(file) ? folder.Keep() : CVardoFilePath();
}
