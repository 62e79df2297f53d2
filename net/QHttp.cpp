// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/QHttp.h"

#include <QIODevice>
#include <algorithm>
#include <limits>

namespace {

// Whether an error of the reply only repeats what the answer's status says.
bool IsStatusError(QNetworkReply::NetworkError error) {
    return error == QNetworkReply::ProxyAuthenticationRequiredError ||
           (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError) ||
           (error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError);
}

int ToInt(qint64 bytes) {
    return static_cast<int>(std::clamp<qint64>(bytes, 0, std::numeric_limits<int>::max()));
}

bool IsAscii(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar ch) { return ch.unicode() < 0x80; });
}

bool IsChunked(const QNetworkReply& reply) {
    return reply.hasRawHeader("Transfer-Encoding");
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
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
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
    manager_ = std::make_unique<QNetworkAccessManager>();
    manager_->setProxy(proxy);
    reply_ = manager_->get(request);
    connect(reply_, &QNetworkReply::metaDataChanged, this, &QHttp::OnHeader);
    connect(reply_, &QNetworkReply::readyRead, this, &QHttp::OnData);
    connect(reply_, &QNetworkReply::finished, this, &QHttp::OnFinished);
    connect(reply_, &QNetworkReply::downloadProgress, this,
            [this](qint64 done, qint64 total) { emit dataReadProgress(ToInt(done), ToInt(total)); });
    silence_.start();
    head_.start();
    if (bounds_.wholeTime)
        wholeTime_.start();
}

void QHttp::OnHeader() {
    silence_.start();
    head_.stop();
    const QHttpResponseHeader header(reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(),
                                     reply_->rawHeader("Proxy-Authenticate"));
    if (header.statusCode() == QHttpResponseHeader::PROXY_AUTHENTICATION_REQUIRED) {
        wasChallenged_ = true;
        sendBasic_ = header.offersProxyScheme("Basic") && !header.offersProxyScheme("Digest");
    }
    emit responseHeaderReceived(header);
    if (!bounds_.mayBeChunked && header.statusCode() == QHttpResponseHeader::OK && IsChunked(*reply_))
        Break(Error::OUT_OF_BOUNDS, BadAnswer());
}

void QHttp::OnData() {
    silence_.start();
    const QByteArray data = reply_->readAll();
    received_ += data.size();
    if (bounds_.bodyBytes && received_ > *bounds_.bodyBytes)
        Break(Error::OUT_OF_BOUNDS, BadAnswer());
    else if (to_->write(data) != data.size())
        Break(Error::NOT_WRITTEN, to_->errorString());
}

void QHttp::OnTooLong() {
    Break(Error::OUT_OF_BOUNDS, tr("The server does not answer"));
}

void QHttp::OnFinished() {
    silence_.stop();
    wholeTime_.stop();
    head_.stop();
    if (reply_->error() != QNetworkReply::NoError && !IsStatusError(reply_->error()))
        SetError(Error::NETWORK, reply_->errorString());
    // The reply reports most bodies that were cut off, but not all.
    if (received_ < reply_->header(QNetworkRequest::ContentLengthHeader).toLongLong())
        SetError(Error::NETWORK, BadAnswer());
    emit requestFinished(id_, error_ != Error::NONE);
}

QString QHttp::BadAnswer() {
    return tr("The server's answer is incomplete or too large");
}

// Aborting brings the reply to its finished signal.
void QHttp::Break(Error error, const QString& text) {
    SetError(error, text);
    reply_->abort();
}

void QHttp::SetError(Error error, const QString& text) {
    if (error_ != Error::NONE)
        return;
    error_ = error;
    errorString_ = text;
}
