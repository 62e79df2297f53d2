// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A plain HTTP client: one GET at a time, into a file or another device.
#pragma once

#include "net/QHttpResponseHeader.h"
#include "net/Transfer.h"
#include "net/events/CWakingFlag.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFuture>
#include <QNetworkProxy>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>
#include <boost/function.hpp>
#include <chrono>
#include <memory>

class CPeerMemory;
class QIODevice;

// Keeps its connection from one request to the next. It follows no redirects, and has no cache, cookies or
// compression. It uses the given proxy and ignores the one that the environment may name. Lives on one
// thread, whose events it serves while it waits.
//
// It costs a fraction of what Qt's network access manager does. The manager would also send the password
// readably to a proxy that asks for NTLM first, and then for Basic.
class QHttp : public QObject {
    Q_OBJECT

public:
    // How the last request ended.
    enum class Error {
        NONE,             // a whole answer has arrived; its body was read only when its status is OK
        NETWORK,          // the connection failed or broke off, or the answer was broken or too large
        UNREACHABLE,      // no address took the connection, and to find that out took SLOW_MS
        TOO_LATE,         // the answer passed one of the bounds of time
        NO_TICKET,        // there is no ticket to show the proxy
        ASKED_TOO_OFTEN,  // the proxy keeps asking for credentials
        NOT_WRITTEN,      // the device did not take the body
        CANCELLED,
    };
    // In milliseconds. The system looks longer for a neighbour that is switched off (EHOSTUNREACH), at each
    // connection.
    static constexpr qint64 SLOW_MS = 1000;

    static constexpr int DEFAULT_PORT = 80;
    // The most times that a proxy may ask for credentials for one file.
    static constexpr int MAX_CHALLENGES = 5;
    // The time between two reports of progress; the last report comes with the end.
    static constexpr std::chrono::milliseconds PROGRESS_INTERVAL{100};

    // The text for a server that was silent, or closed the connection without a byte.
    static QString NoAnswer();
    // The text for a proxy that wants a ticket and gets none that it accepts.
    static QString NoTicket();

    // Looks names up in memory, which must outlive this object.
    explicit QHttp(CPeerMemory& memory);

    // Sets the bounds for the requests of the next file, and counts challenges anew.
    void setBounds(const TransferBounds& bounds) {
        bounds_ = bounds;
        challenges_ = 0;
    }
    // As QUrl::host gives the host, decoded and without brackets; port is 1 to 65535.
    void setHost(const QString& host, int port);
    // QNetworkProxy::NoProxy, or an HTTP proxy. User and password, unless empty, are sent at once and
    // readable for BASIC (RFC 7617), and as the answer to a challenge for DIGEST (RFC 7616), both in UTF-8,
    // and for NTLM; NEGOTIATE shows the user's ticket instead.
    void setProxy(const QNetworkProxy& proxy, QHttpResponseHeader::ProxyScheme scheme) {
        if (proxy.hostName() != proxy_.hostName() || proxy.port() != proxy_.port())
            digest_.reset();
        proxy_ = proxy;
        scheme_ = scheme;
    }

    // Requests path (percent-encoded; "/" when empty) and writes the body of an answer OK to a device as it
    // arrives. Returns when the request has finished, passes a bound, or cancelled is set.
    void get(const QString& path, QIODevice* to, CWakingFlag& cancelled);

    // About the last request.
    Error error() const { return error_; }
    // In Qt's words or the program's.
    QString errorString() const { return errorString_; }
    // The head of its answer; the status is 0 without an answer.
    const QHttpResponseHeader& header() const { return header_; }
    // The connection opened, and the request was on its way; otherwise the host, or the proxy, could not be
    // reached.
    bool wasSent() const { return wasSent_; }
    // Bytes came that are no whole head.
    bool isGarbled() const { return isGarbled_; }
    // Bytes of the body.
    qint64 received() const { return received_; }
    // How often a proxy asked for credentials since setBounds.
    int challenges() const { return challenges_; }

signals:
    // In bytes; total is 0 when unknown.
    void dataReadProgress(int done, int total);

private:
    // The most bytes that wait in memory.
    static constexpr qint64 READ_AHEAD = qint64{1024} * 1024;
    // A connection that rests for longer may be lost without a sign, as behind a router that forgets it.
    static constexpr std::chrono::milliseconds LONGEST_REST{10'000};

    // Empty when the proxy gets no password readably.
    QByteArray BasicLogin() const;
    // The text for an incomplete or too large answer.
    static QString BadAnswer();
    // Shows the proxy the user's ticket.
    void FetchWithTicket();
    // Answers the proxy's challenge, and once more whenever the proxy only wants a new nonce used.
    void FetchWithDigest();
    void FetchWithNtlm();
    // Fetches over the kept connection if it is logged in, and still is afterwards; otherwise false.
    bool FetchAsLoggedIn();
    // Fetches with an answer to a challenge of the proxy, or with none when it is empty. With mayOpen false,
    // only over the kept connection; without that, or when it ends before an answer, there is no header.
    void FetchAnswering(const QByteArray& answer, bool mayOpen = true);
    // The proxy wants credentials by the scheme of the request.
    bool IsChallenged() const;
    void FetchBySocket(const QByteArray& login, bool mayOpen = true);
    // Connects to a host. Sets the error when that fails, and returns false.
    bool Open(const QString& host, int port);
    // Sends a request and takes the answer; false when the connection ended before the answer's first byte.
    bool Converse(const QByteArray& request);
    template <typename Result>
    bool WaitFor(const QFuture<Result>& future);
    // Serves events while keepWaiting answers true. False after an error, such as a passed bound.
    bool Wait(const boost::function<bool()>& keepWaiting);
    void OnSent();
    // Takes more of the answer. True when no more of it is read, because its status is not OK.
    bool OnAnswer(const QHttpResponseHeader& header, const QByteArray& body);
    void ReportProgress();
    // Keeps the first error of a request.
    void SetError(Error error, const QString& text);

    CPeerMemory& memory_;
    TransferBounds bounds_;
    QUrl url_;
    QNetworkProxy proxy_;
    QHttpResponseHeader::ProxyScheme scheme_ = QHttpResponseHeader::ProxyScheme::NONE;
    int challenges_ = 0;

    // The request in hand.
    QIODevice* to_ = nullptr;
    CWakingFlag* cancelled_ = nullptr;
    // The deadlines for the next bytes and for the last; the alarm's event makes a wait look at them.
    QDeadlineTimer next_;
    QDeadlineTimer end_;
    QTimer alarm_;
    bool wasSent_ = false;
    bool isGarbled_ = false;
    QHttpResponseHeader header_;
    qint64 received_ = 0;
    // Bytes of the bodies of other answers.
    qint64 skipped_ = 0;
    Error error_ = Error::NONE;
    QString errorString_;
    QElapsedTimer sinceProgress_;

    // Kept for the next request: the connection and its peer.
    std::unique_ptr<QTcpSocket> socket_;
    QString peer_;
    QElapsedTimer rest_;
    // The last answer was no challenge of a proxy.
    bool isPassed_ = false;
    // The last challenge of a proxy.
    std::optional<CDigestChallenge> digest_;
    std::optional<CNtlmChallenge> ntlm_;
};
