// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/CFetchedFile.h"

#include "platform/xml/XmlFile.h"
#include "signing/CCatalogueSeal.h"
#include "signing/CMinisignSignature.h"

#include <QUrl>

CFetchedFile::CFetchedFile(IDownloader* downloader, const CAtlString& address,
                           const CVardoDirectoryPath& sharedFolder, Kind kind)
    : file_(downloader ? downloader->Download(address) : CAtlString()) {
    if (!downloader || file_.IsEmpty())
        return;
    bytes_ = ReadFileBytes(file_);
    verdict_ = Judge(bytes_, address, sharedFolder, TodayInUtc());
    if (verdict_ == Verdict::COUNTS)
        return;
    bytes_.Empty();
    refusal_ = Refusal(address, kind);
    downloader->TellFailure(refusal_);
}

Verdict CFetchedFile::Judge(const CAtlStringA& bytes, const CAtlString& address,
                            const CVardoDirectoryPath& sharedFolder, const QDate& today) {
    const CCatalogueSeal seal(sharedFolder);
    switch (seal.Judge({bytes.begin(), bytes.end()}, address, today)) {
        case CCatalogueSeal::Judgement::UNSIGNED:
            return Verdict::UNSIGNED;
        case CCatalogueSeal::Judgement::WRONG_ADDRESS:
            return Verdict::SIGNED_ELSEWHERE;
        case CCatalogueSeal::Judgement::EXPIRED:
            return Verdict::SIGNATURE_OVER;
        case CCatalogueSeal::Judgement::GOOD:
            break;
    }
    return Verdict::COUNTS;
}

QString CFetchedFile::Refusal(const CAtlString& address, Kind kind) const {
    const bool isList = kind == Kind::LIST;
    QString reason =
        isList ? tr("The list is not signed by the maker") : tr("The file is not signed by the maker");
    if (verdict_ == Verdict::SIGNATURE_OVER)
        reason = isList ? tr("The signature of the list has expired")
                        : tr("The signature of the file has expired");
    else if (verdict_ == Verdict::SIGNED_ELSEWHERE)
        reason = isList ? tr("The list is signed for another address")
                        : tr("The file is signed for another address");
    return QUrl(address.ToQString()).host() + ": " + reason;
}
