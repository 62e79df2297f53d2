// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/CSocketExchange.h"

#include <QNetworkProxy>
#include <QNetworkRequest>
#include <QUrl>

#include "net/QHttp.h"

namespace {

// RFC 9112, 3; a proxy gets the whole address. The network classes' encodings leave nothing in it that could
// end a line.
QByteArray Written(const QNetworkRequest& request, bool isForProxy) {
    const QUrl url = request.url();
    const QByteArray target = isForProxy ? url.toEncoded() : url.path(QUrl::FullyEncoded).toLatin1();
    QByteArray text = "GET " + target + " HTTP/1.1\r\nHost: " + url.authority(QUrl::FullyEncoded).toLatin1() +
                      "\r\nConnection: close\r\n";
    for (const QByteArray& name : request.rawHeaderList())
        text += name + ": " + request.rawHeader(name) + "\r\n";
    return text + "\r\n";
}

}  // namespace

CSocketExchange::CSocketExchange() {
    connect(&connection_, &CHostConnection::Opened, this, &CSocketExchange::OnOpened);
    connect(&connection_, &CHostConnection::Failed, this, &CSocketExchange::Finish);
}

void CSocketExchange::Start(const QNetworkRequest& request, const QNetworkProxy& proxy) {
    const bool isForProxy = proxy.type() == QNetworkProxy::HttpProxy;
    request_ = Written(request, isForProxy);
    if (isForProxy)
        connection_.Open(proxy.hostName(), proxy.port());
    else
        connection_.Open(request.url().host(), static_cast<quint16>(request.url().port(QHttp::DEFAULT_PORT)));
}

void CSocketExchange::Abort() {
    isOver_ = true;
}

void CSocketExchange::OnOpened() {
    connect(&connection_.Socket(), &QTcpSocket::readyRead, this, &CSocketExchange::OnData);
    connect(&connection_.Socket(), &QTcpSocket::disconnected, this, &CSocketExchange::OnClosed);
    connection_.Socket().write(request_);
}

void CSocketExchange::OnData() {
    if (isOver_)
        return;
    const bool hadHeader = answer_.Header().statusCode() != 0;
    const QByteArray body = answer_.Read(connection_.Socket().readAll());
    if (!hadHeader && answer_.Header().statusCode() != 0)
        emit HeaderReceived(answer_.Header());
    if (!isOver_ && !body.isEmpty())
        emit BodyReceived(body);
    if (answer_.IsComplete())
        Finish({});
    else if (answer_.IsBroken())
        Finish(BadAnswer());
}

void CSocketExchange::OnClosed() {
    answer_.End();
    if (connection_.Socket().error() != QAbstractSocket::RemoteHostClosedError)
        Finish(connection_.Socket().errorString());
    else
        Finish(answer_.IsComplete() ? QString() : BadAnswer());
}

void CSocketExchange::Finish(const QString& error) {
    if (isOver_)
        return;
    isOver_ = true;
    emit Finished(error);
}
