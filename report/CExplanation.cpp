// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/CExplanation.h"

#include "net/FailureText.h"
#include "report/VerdictText.h"
#include "report/WithoutPassword.h"

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
