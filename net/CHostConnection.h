// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Opens a connection to a host that may have several addresses.
#pragma once

#include <QHostAddress>
#include <QHostInfo>
#include <QList>
#include <QObject>
#include <QTcpSocket>
#include <QTimer>
#include <chrono>
#include <memory>
#include <vector>

// Tries the addresses of a host one after the other, IPv6 and IPv4 in turns, and gives each a head start
// before the next joins it; the first connection wins (RFC 8305). So an address that swallows what is sent to
// it costs a moment and not the fetch. Lives on one thread, whose event loop must run.
class CHostConnection : public QObject {
    Q_OBJECT

public:
    // RFC 8305, 5.
    static constexpr std::chrono::milliseconds HEAD_START{250};

    // The order in which they are tried: IPv4 and IPv6 in turns, and otherwise as they come from the
    // resolver, which knows which of them are good to reach (RFC 6724).
    static QList<QHostAddress> InTurns(QList<QHostAddress> addresses);

    CHostConnection();
    ~CHostConnection() override;

    // host is a name or an address. Once for each object; ends in Opened, perhaps at once, or in Failed.
    void Open(const QString& host, quint16 port);
    // The same for the addresses of a host, in this order.
    void OpenAny(const QList<QHostAddress>& addresses, quint16 port);
    // The connection, from Opened on; it belongs to this object.
    QTcpSocket& Socket() { return *socket_; }

signals:
    void Opened();
    void Failed(const QString& error);

private:
    void OnLookedUp(const QHostInfo& info);
    void TryNext();
    void OnConnected(QTcpSocket* socket);
    void OnFailed(const QTcpSocket* socket);

    quint16 port_ = 0;
    int lookup_ = 0;
    // Those that were not tried yet.
    QList<QHostAddress> addresses_;
    QTimer headStart_;
    std::vector<std::unique_ptr<QTcpSocket>> attempts_;
    std::size_t failures_ = 0;
    std::unique_ptr<QTcpSocket> socket_;
};
