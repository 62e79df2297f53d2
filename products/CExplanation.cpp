// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/CExplanation.h"

#include "net/ProxyAddress.h"
#include "platform/files/Addresses.h"

#include <QJsonArray>
#include <utility>

namespace {

// The most facts of one kind. A hostile list could fill the memory with them.
constexpr std::size_t MOST_FACTS = 100;

template <typename Facts>
void Keep(Facts& facts, typename Facts::value_type fact) {
    if (facts.size() < MOST_FACTS)
        facts.push_back(std::move(fact));
}

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

QJsonObject Request(const TransferRecord& record) {
    return {{"address", WithoutPassword(record.url)},
            {"proxy", ProxyAddressText(record.proxyHost, record.proxyPort)},
            {"status", record.status},
            {"bytes", record.bytes},
            {"milliseconds", record.milliseconds},
            {"error", record.succeeded ? QString() : FailureText(record)}};
}

template <typename Facts, typename ToObject>
QJsonArray Array(const std::vector<Facts>& all, ToObject toObject) {
    QJsonArray array;
    for (const Facts& facts : all)
        array.append(toObject(facts));
    return array;
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
            return "it has no good signature of the maker";
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
    Keep(files_, {file, verdict, installed});
}

void CExplanation::OnComparison(const CAtlString& key, const CAtlString& disabler) {
    printer_->OnComparison(key, disabler);
}

void CExplanation::OnDisabler(const CAtlString& key, const CVersionString& installed,
                              const CVersionStringRange& range, bool disables) {
    Keep(disablers_, {key, installed, range, disables});
}

void CExplanation::OnOffer(const CVersionStringRange* range, const CUpdateEntry& offer) {
    offer_ = {offer.version, range ? std::optional(*range) : std::nullopt};
}

void CExplanation::OnCategory(const CAtlString& id, const CAtlString& installed,
                              const CAtlString& published) {
    Keep(categories_, {id, installed, published});
}

QJsonObject CExplanation::ToJson() const {
    const auto file = [](const LocalFile& facts) {
        QJsonObject entry = Judgement(facts.verdict);
        entry["file"] = Text(facts.file.GetFilePathString());
        if (!facts.installed.GetSource().IsEmpty())
            entry["version"] = Version(facts.installed);
        return entry;
    };
    const auto disabler = [](const Disabler& facts) {
        return QJsonObject{{"key", Text(facts.key)},
                           {"installed", Version(facts.installed)},
                           {"range", Range(facts.range)},
                           {"disables", facts.disables}};
    };
    const auto category = [](const Category& facts) {
        return QJsonObject{{"id", Text(facts.id)},
                           {"installed", Text(facts.installed)},
                           {"published", Text(facts.published)}};
    };
    QJsonObject offer;
    if (offer_)
        offer["version"] = Version(offer_->version);
    if (offer_ && offer_->range)
        offer["range"] = Range(*offer_->range);
    return {{"files", Array(files_, file)},
            {"disablers", Array(disablers_, disabler)},
            {"requests", Array(requests_, Request)},
            {"answer", answer_ ? Judgement(*answer_) : QJsonObject()},
            {"categories", Array(categories_, category)},
            {"offer", offer}};
}
