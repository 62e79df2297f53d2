// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The head of an HTTP answer.
#pragma once

#include <QByteArray>
#include <QMetaType>

// A value, so that it can travel to another thread.
class QHttpResponseHeader {
public:
    static constexpr int OK = 200;
    static constexpr int PROXY_AUTHENTICATION_REQUIRED = 407;

    QHttpResponseHeader() = default;
    // proxyChallenges is the value of "Proxy-Authenticate", several fields joined by commas.
    QHttpResponseHeader(int statusCode, const QByteArray& proxyChallenges);

    // 0 when there was no answer.
    int statusCode() const { return statusCode_; }
    // Whether the proxy offers an authentication scheme ("Basic", "Digest"): one that begins a challenge
    // (RFC 7235, 4.3), in upper or lower case; what stands in quotes does not count.
    bool offersProxyScheme(const char* scheme) const;

private:
    int statusCode_ = 0;
    QByteArray proxyChallenges_;
};

Q_DECLARE_METATYPE(QHttpResponseHeader)
