// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The head of an HTTP answer, and what a proxy asks for in it.
#pragma once

#include "net/CNtlmChallenge.h"
#include "net/ProxyChallenges.h"

#include <QByteArray>
#include <QList>
#include <optional>

// A value; any thread.
class QHttpResponseHeader {
public:
    // RFC 9110, 15.
    static constexpr int SWITCHING_PROTOCOLS = 101;
    static constexpr int OK = 200;
    static constexpr int PROXY_AUTHENTICATION_REQUIRED = 407;

    // The ways that a proxy offers for sending it credentials, in the order of preference. A proxy that has
    // offered one gets credentials in no lower way in this run, and in no way after UNUSABLE: what it offers
    // later may come from somebody else.
    enum class ProxyScheme {
        NONE,       // the proxy did not ask, or offers nothing
        BASIC,      // only Basic, which everybody on the way can read (RFC 7617)
        DIGEST,     // a Digest that this program knows, alone or beside others
        NTLM,       // NTLM without such a Digest
        NEGOTIATE,  // Negotiate without those: no credentials
        UNUSABLE,   // only others
    };

    QHttpResponseHeader() = default;
    // proxyChallenges holds the values of the fields "Proxy-Authenticate", with line feeds between;
    // contentLength is in bytes, 0 when the head does not give it.
    QHttpResponseHeader(int statusCode, const QByteArray& proxyChallenges, qint64 contentLength)
        : statusCode_(statusCode),
          challenges_(ParseChallenges(proxyChallenges)),
          contentLength_(contentLength) {}

    // 0 when there was no answer.
    int statusCode() const { return statusCode_; }
    qint64 contentLength() const { return contentLength_; }
    // NONE unless the status is PROXY_AUTHENTICATION_REQUIRED. Takes linear time.
    ProxyScheme proxyScheme() const;
    // The proxy takes the user's ticket of Kerberos, perhaps among other ways to log in.
    bool offersNegotiate() const;
    // The first known challenge of the scheme Digest.
    std::optional<CDigestChallenge> digest() const;
    // The first known challenge of the scheme NTLM.
    std::optional<CNtlmChallenge> ntlm() const;

private:
    bool offers(const QByteArray& scheme) const;

    int statusCode_ = 0;
    QList<ProxyChallenge> challenges_;
    qint64 contentLength_ = 0;
};
