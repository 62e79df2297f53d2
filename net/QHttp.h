// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A plain HTTP client: one GET at a time, into a file or another device.
#pragma once

#include "net/IHttpExchange.h"
#include "net/QHttpResponseHeader.h"
#include "net/TransferBounds.h"

#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QNetworkRequest>
#include <QObject>
#include <QTimer>
#include <chrono>
#include <memory>

class QIODevice;

// Redirects are not followed; there is no cache, no cookie and no compression, and the proxy is the given one
// or none, whatever the environment says. Lives on one thread, whose event loop must run; every get ends in
// requestFinished, at the latest when a bound is passed.
class QHttp : public QObject {
    Q_OBJECT

public:
    // How the last request ended.
    enum class Error {
        NONE,           // with a whole answer, of whatever status
        NETWORK,        // the connection failed or broke off, or what arrived was no HTTP
        OUT_OF_BOUNDS,  // the answer passed one of the bounds
        NOT_WRITTEN,    // the device did not take what arrived
    };

    static constexpr int DEFAULT_PORT = 80;
    // Between two reports of progress, the last of which comes with the end.
    static constexpr std::chrono::milliseconds PROGRESS_INTERVAL{100};

    explicit QHttp(const TransferBounds& bounds);
    ~QHttp() override;

    void setHost(const QString& host, int port);
    // QNetworkProxy::NoProxy, or an HTTP proxy with the user and password to try (none when the user is
    // empty). After a challenge with Basic but no Digest they are sent at once with the next request; other
    // schemes are negotiated, which takes a further round trip.
    void setProxy(const QNetworkProxy& proxy);

    // Requests path (percent-encoded; "/" when empty) and writes the body to a device as it arrives. A device
    // that is not open ends the request as NOT_WRITTEN, with its error as the text. Returns the request's id.
    // The device must outlive the request.
    int get(const QString& path, QIODevice* to);

    // About the last request. May be read on another thread from its requestFinished until the next get.
    Error error() const { return error_; }
    QString errorString() const { return errorString_; }
    // Bytes of the body.
    qint64 received() const { return received_; }
    // The proxy was not given the user and password yet. Qt's own classes answer a challenge at once, but in
    // Latin-1 when it is Basic; so credentials that are not ASCII wait for the request after the challenge.
    // On this object's thread.
    bool hasHeldBackCredentials() const { return heldBack_; }

signals:
    // error is true for everything but Error::NONE.
    void requestFinished(int id, bool error);
    void responseHeaderReceived(const QHttpResponseHeader& header);
    // In bytes; total is 0 when unknown.
    void dataReadProgress(int done, int total);

private:
    QNetworkRequest MakeRequest(const QString& path) const;
    QByteArray BasicCredentials() const;
    void Start(const QNetworkRequest& request);
    void OnHeader(const QHttpResponseHeader& header);
    void OnBody(const QByteArray& bytes);
    void OnTooLong();
    void OnFinished(const QString& error);
    void ReportProgress();
    // Ends the request from this side.
    void Break(Error error, const QString& text);
    void Finish();
    // Only the first error of a request counts.
    void SetError(Error error, const QString& text);

    TransferBounds bounds_;
    QTimer silence_;
    QTimer wholeTime_;
    QTimer head_;
    QString host_;
    int port_ = 0;
    QNetworkProxy proxy_;
    bool wasChallenged_ = false;
    bool sendBasic_ = false;
    bool heldBack_ = false;
    int id_ = 0;
    QIODevice* to_ = nullptr;
    // Bytes of the body.
    qint64 received_ = 0;
    Error error_ = Error::NONE;
    QString errorString_;
    QHttpResponseHeader header_;
    QElapsedTimer sinceProgress_;
    std::unique_ptr<IHttpExchange> exchange_;
};
