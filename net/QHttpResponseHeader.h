// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The head of an HTTP answer.
#pragma once

#include <QByteArray>
#include <QMetaType>

// A value, so that it can travel to another thread.
class QHttpResponseHeader {
public:
    // RFC 9110, 15.
    static constexpr int SWITCHING_PROTOCOLS = 101;
    static constexpr int OK = 200;
    static constexpr int PROXY_AUTHENTICATION_REQUIRED = 407;

    // What a proxy offers for the credentials that it wants.
    enum class ProxyScheme {
        NONE,     // no challenge
        BASIC,    // readable to everybody on the way (RFC 7617)
        BETTER,   // Digest, NTLM or Negotiate, whatever stands beside it; or nothing that is known here
        TWISTED,  // the same, in a way that Qt's network classes would take for BASIC
    };

    QHttpResponseHeader() = default;
    // proxyChallenges is the value of "Proxy-Authenticate", several fields with line feeds between;
    // contentLength is in bytes, 0 when the head does not tell.
    QHttpResponseHeader(int statusCode, const QByteArray& proxyChallenges, qint64 contentLength)
        : statusCode_(statusCode), proxyChallenges_(proxyChallenges), contentLength_(contentLength) {}

    // 0 when there was no answer.
    int statusCode() const { return statusCode_; }
    qint64 contentLength() const { return contentLength_; }
    // Of an answer with the status PROXY_AUTHENTICATION_REQUIRED, else NONE. Takes linear time.
    ProxyScheme proxyScheme() const;

private:
    int statusCode_ = 0;
    QByteArray proxyChallenges_;
    qint64 contentLength_ = 0;
};

Q_DECLARE_METATYPE(QHttpResponseHeader)
