// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/CExplanation.h"

#include "net/Transfer.h"
#include "platform/files/Addresses.h"

namespace {

QString Text(const CAtlString& text) {
    return text.ToQString();
}

// How the text was read.
QJsonObject Version(const CVersionString& version) {
    return {{"text", Text(version.GetSource())},
            {"read", Text(version.GetString())},
            {"valid", version.IsValid()}};
}

QJsonObject Range(const CVersionStringRange& range) {
    return {{"from", Text(range.GetFrom().GetString())}, {"to", Text(range.GetTo().GetString())}};
}

QJsonObject Judgement(Verdict verdict) {
    return {{"used", verdict == Verdict::COUNTS}, {"reason", VerdictText(verdict)}};
}

QString Proxy(const TransferRecord& record) {
    return record.proxyHost.IsEmpty() ? QString()
                                      : Text(record.proxyHost) + ':' + QString::number(record.proxyPort);
}

}  // namespace

QString VerdictText(Verdict verdict) {
    switch (verdict) {
        case Verdict::NOT_READ:
            return "it was not read";
        case Verdict::MISSING:
            return "there is no such file";
        case Verdict::NOT_FETCHED:
            return "nothing was fetched";
        case Verdict::UNSIGNED:
            return "it is not signed by the maker";
        case Verdict::SIGNATURE_OVER:
            return "its signature has expired";
        case Verdict::SIGNED_ELSEWHERE:
            return "it is signed for another address";
        case Verdict::NO_XML:
            return "it cannot be read, or is no well-formed XML";
        case Verdict::OTHER_NAME:
            return "its name goes on with something else than a digit after the base name";
        case Verdict::KNOWN_VERSION:
            return "an earlier file has the same version";
        case Verdict::NO_PRODUCT:
            return "it has no product element";
        case Verdict::NO_VERSION:
            return "it has no CurrentVersion";
        case Verdict::NO_FOLDER:
            return "it has no address of the folder on the web";
        case Verdict::NO_FILE_NAME:
            return "it has no name of the file on the web";
        case Verdict::NOT_FOR_CLIENTS:
            return "the Location of its root is not Server";
        case Verdict::NO_NOTIFICATION:
            return "its root is no Notification";
        case Verdict::NO_TEXT:
            return "it has no text in any language";
        case Verdict::NO_PAGE:
            return "it has no WebPage";
        case Verdict::NO_DATES:
            return "its StartDate or StopDate is no date";
        case Verdict::TOO_EARLY:
            return "it is shown only after its StartDate";
        case Verdict::OVER:
            return "it is shown only before its StopDate";
        case Verdict::NO_BOARD:
            return "it is for machines with board software below 10.0.0.0";
        case Verdict::NO_RECORD:
            return "the settings of the notebook software have no record of it";
        case Verdict::NO_TOOL:
            return "its record in the settings has no AppPath";
        case Verdict::NO_MANIFEST:
            return "its record in the settings has no ImsManifestXml";
        case Verdict::NO_CATEGORY:
            return "it has no categories";
        case Verdict::UNKNOWN_CATEGORIES:
            return "none of its categories is installed";
        case Verdict::COUNTS:
            break;
    }
    return {};
}

void CExplanation::OnLocalFile(const CVardoFilePath& file, Verdict verdict, const CVersionString& installed) {
    QJsonObject entry = Judgement(verdict);
    entry["file"] = Text(file.GetFilePathString());
    if (!installed.GetSource().IsEmpty())
        entry["version"] = Version(installed);
    files_.append(entry);
}

void CExplanation::OnDisabler(const CAtlString& key, const CVersionString& installed,
                              const CVersionStringRange& range, bool disables) {
    disablers_.append(QJsonObject{{"key", Text(key)},
                                  {"installed", Version(installed)},
                                  {"range", Range(range)},
                                  {"disables", disables}});
}

void CExplanation::OnRemoteFile(Verdict verdict) {
    answer_ = Judgement(verdict);
}

void CExplanation::OnOffer(const CVersionStringRange* range, const CUpdateEntry& offer) {
    offer_ = {{"version", Version(offer.version)}};
    if (range)
        offer_["range"] = Range(*range);
}

void CExplanation::OnCategory(const CAtlString& id, const CAtlString& installed,
                              const CAtlString& published) {
    categories_.append(
        QJsonObject{{"id", Text(id)}, {"installed", Text(installed)}, {"published", Text(published)}});
}

void CExplanation::OnTransfer(const TransferRecord& record) {
    const QString error = record.succeeded ? QString() : FailureText(record);
    requests_.append(QJsonObject{{"address", WithoutPassword(record.url)},
                                 {"proxy", Proxy(record)},
                                 {"status", record.status},
                                 {"bytes", record.bytes},
                                 {"milliseconds", record.milliseconds},
                                 {"error", error}});
}

QJsonObject CExplanation::ToJson() const {
    return {{"files", files_},   {"disablers", disablers_},   {"requests", requests_},
            {"answer", answer_}, {"categories", categories_}, {"offer", offer_}};
}
