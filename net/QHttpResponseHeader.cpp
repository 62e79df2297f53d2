// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/QHttpResponseHeader.h"

#include <QSet>
#include <algorithm>

namespace {

template <typename Challenge>
std::optional<Challenge> FirstKnown(const QList<ProxyChallenge>& challenges) {
    for (const ProxyChallenge& challenge : challenges)
        if (auto known = Challenge::From(challenge))
            return known;
    return std::nullopt;
}

}  // namespace

QHttpResponseHeader::ProxyScheme QHttpResponseHeader::proxyScheme() const {
    if (statusCode_ != PROXY_AUTHENTICATION_REQUIRED)
        return ProxyScheme::NONE;
    if (digest())
        return ProxyScheme::DIGEST;
    QSet<QByteArray> offered;
    for (const ProxyChallenge& challenge : challenges_)
        offered << challenge.scheme;
    if (offered.isEmpty())
        return ProxyScheme::NONE;
    if (offered.contains("ntlm"))
        return ProxyScheme::NTLM;
    if (offered.contains("negotiate"))
        return ProxyScheme::NEGOTIATE;
    const bool isBasic = offered.contains("basic") && !offered.contains("digest");
    return isBasic ? ProxyScheme::BASIC : ProxyScheme::UNUSABLE;
}

bool QHttpResponseHeader::offersNegotiate() const {
    return statusCode_ == PROXY_AUTHENTICATION_REQUIRED &&
           std::any_of(challenges_.begin(), challenges_.end(),
                       [](const ProxyChallenge& challenge) { return challenge.scheme == "negotiate"; });
}

std::optional<CDigestChallenge> QHttpResponseHeader::digest() const {
    return FirstKnown<CDigestChallenge>(challenges_);
}

std::optional<CNtlmChallenge> QHttpResponseHeader::ntlm() const {
    return FirstKnown<CNtlmChallenge>(challenges_);
}
