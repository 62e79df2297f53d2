// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A plain HTTP client: one GET at a time, into a file or another device.
#pragma once

#include "net/QHttpResponseHeader.h"
#include "net/TransferBounds.h"
#include "net/events/WakingFlag.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QTcpSocket>
#include <QTimer>
#include <boost/function.hpp>
#include <chrono>
#include <memory>

class CPeerMemory;
class QIODevice;

// Keeps its connection from one request to the next. Redirects are not followed; there is no cache, no cookie
// and no compression, and the proxy is the given one or none, whatever the environment says. Lives on one
// thread, whose events it serves while it waits.
//
// A request goes over a socket of its own, which costs a fraction of what Qt's network access manager does;
// only to negotiate with a proxy does the manager carry it: it knows Digest and NTLM.
class QHttp : public QObject {
    Q_OBJECT

public:
    // How the last request ended.
    enum class Error {
        NONE,         // with a whole answer, or one whose status is not OK and whose body was not read
        NETWORK,      // the connection failed or broke off, or what arrived was no HTTP
        TOO_LATE,     // the answer passed one of the bounds of time
        TOO_MUCH,     // the answer is too large, or the proxy does not stop to ask for credentials
        NOT_WRITTEN,  // the device did not take what arrived
        CANCELLED,
    };
    // What user and password of the proxy are for.
    enum class Authentication {
        BASIC,       // to be sent at once, readable, in UTF-8 (RFC 7617)
        NEGOTIATED,  // to answer a challenge with
    };

    static constexpr int DEFAULT_PORT = 80;
    // So often a proxy may ask for credentials before it has answered a file; more is no conversation.
    static constexpr int MAX_CHALLENGES = 5;
    // Between two reports of progress, the last of which comes with the end.
    static constexpr std::chrono::milliseconds PROGRESS_INTERVAL{100};
    // The text of TOO_LATE.
    static QString NoAnswer();
    // The text for an answer that is not whole, or too much.
    static QString BadAnswer();

    // memory looks names up, and must outlive this object.
    explicit QHttp(CPeerMemory& memory);

    // For the requests of the next file; challenges are counted anew.
    void setBounds(const TransferBounds& bounds);
    void setHost(const QString& host, int port);
    // QNetworkProxy::NoProxy, or an HTTP proxy, with user and password or without.
    void setProxy(const QNetworkProxy& proxy, Authentication authentication);

    // Requests path (percent-encoded; "/" when empty) and writes the body to a device as it arrives; only
    // that of an answer OK. Returns when the request has finished, at the latest when a bound is passed or
    // cancelled is set.
    Error get(const QString& path, QIODevice* to, WakingFlag& cancelled);

    // About the last request.
    Error error() const { return error_; }
    // In Qt's words or the program's.
    QString errorString() const { return errorString_; }
    // Of its answer; the status is 0 when there was none.
    const QHttpResponseHeader& header() const { return header_; }
    // A connection was there; else the error is that of reaching the host, or the proxy.
    bool wasSent() const { return wasSent_; }
    // Bytes of the body.
    qint64 received() const { return received_; }
    // How often a proxy asked for credentials since setBounds.
    int challenges() const { return challenges_; }

signals:
    // In bytes; total is 0 when unknown.
    void dataReadProgress(int done, int total);

private:
    QNetworkRequest MakeRequest(const QString& path) const;
    void FetchByManager(QNetworkRequest request);
    void FetchBySocket(const QNetworkRequest& request);
    // Connects to a host; whether that was possible.
    bool Open(const QString& host, int port);
    // Sends a request and takes the answer; false when the connection ended before the first byte of one.
    bool Converse(const QByteArray& request);
    // Serves events while keepWaiting answers true. False, with the error, when a bound is passed before or
    // the request is cancelled.
    bool Wait(const boost::function<bool()>& keepWaiting);
    void OnSent();
    // Takes more of the answer. Whether it is over, since its body does not count.
    bool OnAnswer(const QHttpResponseHeader& header, const QByteArray& body);
    void ReportProgress();
    // Only the first error of a request counts.
    void SetError(Error error, const QString& text);

    CPeerMemory& memory_;
    TransferBounds bounds_;
    QString host_;
    int port_ = 0;
    QNetworkProxy proxy_;
    Authentication authentication_ = Authentication::BASIC;
    int challenges_ = 0;

    // Of the request in hand.
    QIODevice* to_ = nullptr;
    WakingFlag* cancelled_ = nullptr;
    // When the next bytes must have come, and when all of them; the alarm's event lets a wait look again.
    QDeadlineTimer next_;
    QDeadlineTimer end_;
    QTimer alarm_;
    bool wasSent_ = false;
    QHttpResponseHeader header_;
    qint64 received_ = 0;
    Error error_ = Error::NONE;
    QString errorString_;
    QElapsedTimer sinceProgress_;

    // What is kept for the next request: the connection and where it leads, or what a proxy has agreed to.
    std::unique_ptr<QTcpSocket> socket_;
    QString peer_;
    std::unique_ptr<QNetworkAccessManager> manager_;
};
