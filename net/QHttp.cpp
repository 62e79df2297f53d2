// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/QHttp.h"

#include <QIODevice>
#include <algorithm>
#include <limits>

#include "net/CManagerExchange.h"
#include "net/CSocketExchange.h"

namespace {

int ToInt(qint64 bytes) {
    return static_cast<int>(std::clamp<qint64>(bytes, 0, std::numeric_limits<int>::max()));
}

bool IsAscii(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar ch) { return ch.unicode() < 0x80; });
}

}  // namespace

QHttp::QHttp(const TransferBounds& bounds) : bounds_(bounds) {
    for (QTimer* timer : {&silence_, &wholeTime_, &head_}) {
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, this, &QHttp::OnTooLong);
    }
    silence_.setInterval(bounds.silence);
    head_.setInterval(bounds.head);
    if (bounds.wholeTime)
        wholeTime_.setInterval(*bounds.wholeTime);
}

QHttp::~QHttp() = default;

void QHttp::setHost(const QString& host, int port) {
    host_ = host;
    port_ = port;
}

void QHttp::setProxy(const QNetworkProxy& proxy) {
    proxy_ = proxy;
}

int QHttp::get(const QString& path, QIODevice* to) {
    ++id_;
    to_ = to;
    received_ = 0;
    header_ = {};
    sinceProgress_.start();
    error_ = Error::NONE;
    errorString_.clear();
    if (to_->isOpen()) {
        Start(MakeRequest(path));
    } else {
        SetError(Error::NOT_WRITTEN, to_->errorString());
        QMetaObject::invokeMethod(
            this, [this] { emit requestFinished(id_, true); }, Qt::QueuedConnection);
    }
    return id_;
}

QNetworkRequest QHttp::MakeRequest(const QString& path) const {
    QUrl url;
    url.setScheme(QStringLiteral("http"));
    url.setHost(host_);
    url.setPort(port_ == DEFAULT_PORT ? -1 : port_);
    url.setPath(path.isEmpty() ? QStringLiteral("/") : path, QUrl::TolerantMode);

    QNetworkRequest request(url);
    // What the network access manager says; some servers turn away whoever says nothing.
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Mozilla/5.0"));
    request.setRawHeader("Accept-Encoding", "identity");
    if (sendBasic_ && !proxy_.user().isEmpty())
        request.setRawHeader("Proxy-Authorization", BasicCredentials());
    return request;
}

// RFC 7617, in UTF-8.
QByteArray QHttp::BasicCredentials() const {
    return "Basic " + (proxy_.user() + QLatin1Char(':') + proxy_.password()).toUtf8().toBase64();
}

void QHttp::Start(const QNetworkRequest& request) {
    QNetworkProxy proxy = proxy_;
    heldBack_ = !wasChallenged_ && !IsAscii(proxy.user() + proxy.password());
    if (heldBack_ || request.hasRawHeader("Proxy-Authorization")) {
        proxy.setUser(QString());
        proxy.setPassword(QString());
    }
    // Whoever has credentials to answer a challenge with must know the scheme first.
    if (proxy.user().isEmpty())
        exchange_ = std::make_unique<CSocketExchange>();
    else
        exchange_ = std::make_unique<CManagerExchange>();
    connect(exchange_.get(), &IHttpExchange::HeaderReceived, this, &QHttp::OnHeader);
    connect(exchange_.get(), &IHttpExchange::BodyReceived, this, &QHttp::OnBody);
    connect(exchange_.get(), &IHttpExchange::Finished, this, &QHttp::OnFinished);
    exchange_->Start(request, proxy);
    silence_.start();
    head_.start();
    if (bounds_.wholeTime)
        wholeTime_.start();
}

void QHttp::OnHeader(const QHttpResponseHeader& header) {
    silence_.start();
    head_.stop();
    header_ = header;
    if (header.statusCode() == QHttpResponseHeader::PROXY_AUTHENTICATION_REQUIRED) {
        wasChallenged_ = true;
        sendBasic_ = header.offersProxyScheme("Basic") && !header.offersProxyScheme("Digest");
    }
    emit responseHeaderReceived(header);
    if (!bounds_.mayBeChunked && header.statusCode() == QHttpResponseHeader::OK && header.isChunked())
        Break(Error::OUT_OF_BOUNDS, IHttpExchange::BadAnswer());
}

void QHttp::OnBody(const QByteArray& bytes) {
    silence_.start();
    received_ += bytes.size();
    if (bounds_.bodyBytes && received_ > *bounds_.bodyBytes)
        Break(Error::OUT_OF_BOUNDS, IHttpExchange::BadAnswer());
    else if (to_->write(bytes) != bytes.size())
        Break(Error::NOT_WRITTEN, to_->errorString());
    else if (sinceProgress_.hasExpired(PROGRESS_INTERVAL.count()))
        ReportProgress();
}

void QHttp::OnTooLong() {
    Break(Error::OUT_OF_BOUNDS, tr("The server does not answer"));
}

void QHttp::OnFinished(const QString& error) {
    if (!error.isEmpty())
        SetError(Error::NETWORK, error);
    if (received_ > 0)
        ReportProgress();
    Finish();
}

void QHttp::ReportProgress() {
    sinceProgress_.start();
    emit dataReadProgress(ToInt(received_), ToInt(header_.contentLength()));
}

void QHttp::Break(Error error, const QString& text) {
    SetError(error, text);
    exchange_->Abort();
    Finish();
}

void QHttp::Finish() {
    silence_.stop();
    wholeTime_.stop();
    head_.stop();
    emit requestFinished(id_, error_ != Error::NONE);
}

void QHttp::SetError(Error error, const QString& text) {
    if (error_ != Error::NONE)
        return;
    error_ = error;
    errorString_ = text;
}
