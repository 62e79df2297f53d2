// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/CManagerExchange.h"

#include <QNetworkProxy>
#include <QNetworkRequest>

namespace {

// Whether an error of the reply only repeats what the answer's status says.
bool IsStatusError(QNetworkReply::NetworkError error) {
    return error == QNetworkReply::ProxyAuthenticationRequiredError ||
           (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError) ||
           (error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError);
}

qint64 Length(const QNetworkReply& reply) {
    return reply.header(QNetworkRequest::ContentLengthHeader).toLongLong();
}

// There is no cache, no cookie and no following of redirections.
QNetworkRequest Plain(QNetworkRequest request) {
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    return request;
}

}  // namespace

void CManagerExchange::Start(const QNetworkRequest& request, const QNetworkProxy& proxy) {
    manager_.setProxy(proxy);
    reply_ = manager_.get(Plain(request));
    connect(reply_, &QNetworkReply::metaDataChanged, this, &CManagerExchange::OnHeader);
    connect(reply_, &QNetworkReply::readyRead, this, &CManagerExchange::OnData);
    connect(reply_, &QNetworkReply::finished, this, &CManagerExchange::OnFinished);
}

void CManagerExchange::Abort() {
    reply_->disconnect(this);
    reply_->abort();
}

void CManagerExchange::OnHeader() {
    emit HeaderReceived({reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(),
                         reply_->rawHeader("Proxy-Authenticate"), Length(*reply_),
                         reply_->hasRawHeader("Transfer-Encoding")});
}

void CManagerExchange::OnData() {
    const QByteArray bytes = reply_->readAll();
    received_ += bytes.size();
    emit BodyReceived(bytes);
}

void CManagerExchange::OnFinished() {
    if (reply_->error() != QNetworkReply::NoError && !IsStatusError(reply_->error()))
        emit Finished(reply_->errorString());
    else
        // The reply reports most bodies that were cut off, but not all.
        emit Finished(received_ < Length(*reply_) ? BadAnswer() : QString());
}
