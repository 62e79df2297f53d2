// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/QHttpResponseHeader.h"

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

bool QHttpResponseHeader::offers(const QByteArray& scheme) const {
    return std::any_of(challenges_.begin(), challenges_.end(),
                       [&](const ProxyChallenge& challenge) { return challenge.scheme == scheme; });
}

QHttpResponseHeader::ProxyScheme QHttpResponseHeader::proxyScheme() const {
    if (statusCode_ != PROXY_AUTHENTICATION_REQUIRED || challenges_.isEmpty())
        return ProxyScheme::NONE;
    if (digest())
        return ProxyScheme::DIGEST;
    if (offers("ntlm"))
        return ProxyScheme::NTLM;
    if (offers("negotiate"))
        return ProxyScheme::NEGOTIATE;
    return offers("basic") && !offers("digest") ? ProxyScheme::BASIC : ProxyScheme::UNUSABLE;
}

bool QHttpResponseHeader::offersNegotiate() const {
    return statusCode_ == PROXY_AUTHENTICATION_REQUIRED && offers("negotiate");
}

std::optional<CDigestChallenge> QHttpResponseHeader::digest() const {
    return FirstKnown<CDigestChallenge>(challenges_);
}

std::optional<CNtlmChallenge> QHttpResponseHeader::ntlm() const {
    return FirstKnown<CNtlmChallenge>(challenges_);
}
