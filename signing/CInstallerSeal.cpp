// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "signing/CInstallerSeal.h"

#include "signing/CMinisignSignature.h"
#include "signing/CPrivateFolder.h"

#include <QByteArray>
#include <QUrl>

namespace {

// Without the word, the signature vouches only for an empty argument.
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

bool VouchesForFile(const CMinisignSignature& signature, const CAtlString& offered) {
    const auto file = signature.GetOnlyWord("file:");
    const CAtlString name = CVardoFilePath(offered).GetFileName();
    return !name.IsEmpty() && file && *file == CAtlStringA(name.GetString()).GetString();
}

}  // namespace

QString CInstallerSeal::CommentFor(const CAtlString& file, const CAtlString& version,
                                   const CAtlString& argument) {
    const QString name = CVardoFilePath(file).GetFileName().ToQString();
    const QString comment = QString("file:%1 version:%2").arg(name, version.ToQString());
    return argument.IsEmpty()
               ? comment
               : comment + " argument:" + QString::fromLatin1(QUrl::toPercentEncoding(argument.ToQString()));
}

bool CInstallerSeal::Accept(std::string_view signature, const Offer& offer) {
    signature_ = CMinisignSignature::Parse(signature);
    refusal_ = Examine(offer);
    return refusal_ == Refusal::NOTHING;
}

CInstallerSeal::Refusal CInstallerSeal::Examine(const Offer& offer) const {
    if (!signature_)
        return Refusal::NO_SIGNATURE;
    if (!VouchesForFile(*signature_, offer.file))
        return Refusal::FILE_NAME;
    const auto version = signature_->GetOnlyWord("version:");
    if (!version || !offer.isVersion(CAtlString(version->c_str())))
        return Refusal::VERSION;
    if (!VouchesForArgument(*signature_, offer.argument))
        return Refusal::ARGUMENT;
    if (!IsValidOn(*signature_, offer.today))
        return Refusal::LAST_DAY;
    // Last, so that with another key all else fits.
    return keys_.HasMade(*signature_) ? Refusal::NOTHING : Refusal::KEY;
}

bool CInstallerSeal::IsOf(const CFileDescriptor& file) const {
    return signature_ && keys_.HasSigned(file, *signature_);
}

CVardoFilePath CInstallerSeal::Secure(const CVardoFilePath& fetched) const {
    CPrivateFolder folder;
    const CFileDescriptor file = folder.TakeIn(fetched);
    return IsOf(file) ? folder.Keep() : CVardoFilePath();
}
