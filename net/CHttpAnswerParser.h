// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// An HTTP answer: its head, and the parser that reads it while it arrives.
#pragma once

#include "net/CNtlmChallenge.h"

#include <QByteArray>
#include <memory>
#include <optional>

// The head of an HTTP answer.
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
    int statusCode_ = 0;
    QList<ProxyChallenge> challenges_;
    qint64 contentLength_ = 0;
};

// Reads one answer to a GET (RFC 9112) in pieces of any size, with Boost.Beast's parser. It skips answers
// that only announce another one (1xx). An answer is broken when that parser refuses it, when its status is
// 101 or below 100, or when its body has a transfer coding that this program cannot undo.
class CHttpAnswerParser {
public:
    // The most bytes of a head with the skipped answers before it, and of the text between two chunks.
    static constexpr qsizetype MAX_HEAD = 262'144;

    // maxBody is in bytes.
    explicit CHttpAnswerParser(qint64 maxBody);
    ~CHttpAnswerParser();

    // Takes the next bytes of the connection and returns the bytes of the body among them. An empty array
    // says that the connection has ended.
    QByteArray Read(const QByteArray& bytes);

    // Its status is 0 until the whole head has arrived.
    const QHttpResponseHeader& Header() const { return header_; }
    bool IsComplete() const { return state_ == State::COMPLETE; }
    // A broken answer stays broken.
    bool IsBroken() const { return state_ == State::BROKEN; }
    // The connection can carry another request: the answer is complete, no byte follows it, and the server
    // keeps the connection (RFC 9112, 9.3).
    bool LeavesConnectionOpen() const;

private:
    struct Parser;
    enum class State { OPEN, COMPLETE, BROKEN };

    bool IsOpen() const { return state_ == State::OPEN; }
    void End();
    // Starts anew after an interim answer of that many bytes.
    void Skip(std::size_t bytes);

    State state_ = State::OPEN;
    QHttpResponseHeader header_;
    qint64 maxBody_;
    std::size_t maxHead_ = MAX_HEAD;
    // What the parser has not taken yet.
    QByteArray rest_;
    std::unique_ptr<Parser> parser_;
};
