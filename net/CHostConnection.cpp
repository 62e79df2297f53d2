// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/CHostConnection.h"

#include <QNetworkProxy>
#include <algorithm>
#include <utility>

CHostConnection::CHostConnection() {
    headStart_.setSingleShot(true);
    headStart_.setInterval(HEAD_START);
    connect(&headStart_, &QTimer::timeout, this, &CHostConnection::TryNext);
}

CHostConnection::~CHostConnection() {
    QHostInfo::abortHostLookup(lookup_);
}

void CHostConnection::Open(const QString& host, quint16 port) {
    port_ = port;
    const QHostAddress address(host);
    if (address.isNull())
        lookup_ = QHostInfo::lookupHost(host, this, &CHostConnection::OnLookedUp);
    else
        OpenAny({address}, port);
}

void CHostConnection::OpenAny(const QList<QHostAddress>& addresses, quint16 port) {
    port_ = port;
    addresses_ = addresses;
    TryNext();
}

QList<QHostAddress> CHostConnection::InTurns(QList<QHostAddress> addresses) {
    for (qsizetype i = 1; i < addresses.size(); ++i) {
        const auto isOther = [last = addresses[i - 1].protocol()](const QHostAddress& address) {
            return address.protocol() != last;
        };
        const auto other = std::find_if(addresses.begin() + i, addresses.end(), isOther);
        if (other != addresses.end())
            std::rotate(addresses.begin() + i, other, other + 1);
    }
    return addresses;
}

void CHostConnection::OnLookedUp(const QHostInfo& info) {
    // Whatever kept the resolver from it: its own words are not for users.
    if (info.addresses().isEmpty())
        emit Failed(tr("Host not found"));
    else
        OpenAny(InTurns(info.addresses()), port_);
}

void CHostConnection::TryNext() {
    if (addresses_.isEmpty())
        return;
    QTcpSocket* const attempt = attempts_.emplace_back(std::make_unique<QTcpSocket>()).get();
    // Whatever the environment says.
    attempt->setProxy(QNetworkProxy::NoProxy);
    connect(attempt, &QTcpSocket::connected, this, [this, attempt] { OnConnected(attempt); });
    connect(
        attempt, &QTcpSocket::errorOccurred, this, [this, attempt] { OnFailed(attempt); },
        Qt::QueuedConnection);
    headStart_.start();
    attempt->connectToHost(addresses_.takeFirst(), port_);
}

void CHostConnection::OnConnected(QTcpSocket* socket) {
    headStart_.stop();
    const auto winner = std::find_if(attempts_.begin(), attempts_.end(),
                                     [&](const auto& attempt) { return attempt.get() == socket; });
    socket_ = std::move(*winner);
    socket_->disconnect(this);
    attempts_.clear();
    emit Opened();
}

void CHostConnection::OnFailed(const QTcpSocket* socket) {
    // Of those that lost, nothing is left; of those that still run, one may win.
    if (socket_ || ++failures_ < attempts_.size())
        return;
    if (addresses_.isEmpty())
        emit Failed(socket->errorString());
    else
        TryNext();
}
