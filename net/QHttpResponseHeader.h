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
    static constexpr int CONTINUE = 100;
    static constexpr int SWITCHING_PROTOCOLS = 101;
    static constexpr int OK = 200;
    static constexpr int NO_CONTENT = 204;
    static constexpr int NOT_MODIFIED = 304;
    static constexpr int PROXY_AUTHENTICATION_REQUIRED = 407;

    QHttpResponseHeader() = default;
    // proxyChallenges is the value of "Proxy-Authenticate", several fields joined by commas; contentLength is
    // in bytes, 0 when the head does not tell.
    QHttpResponseHeader(int statusCode, const QByteArray& proxyChallenges, qint64 contentLength,
                        bool isChunked)
        : statusCode_(statusCode),
          proxyChallenges_(proxyChallenges),
          contentLength_(contentLength),
          isChunked_(isChunked) {}

    // 0 when there was no answer.
    int statusCode() const { return statusCode_; }
    qint64 contentLength() const { return contentLength_; }
    // The body has a transfer coding, and so no length (RFC 9112, 6.1).
    bool isChunked() const { return isChunked_; }
    // Whether the proxy offers an authentication scheme ("Basic", "Digest"): one that begins a challenge
    // (RFC 7235, 4.3), in upper or lower case; what stands in quotes does not count.
    bool offersProxyScheme(const char* scheme) const;

private:
    int statusCode_ = 0;
    QByteArray proxyChallenges_;
    qint64 contentLength_ = 0;
    bool isChunked_ = false;
};

Q_DECLARE_METATYPE(QHttpResponseHeader)
