// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/HostConnection.h"

#include <QDeadlineTimer>
#include <QNetworkProxy>
#include <QTimer>
#include <algorithm>
#include <vector>

QList<QHostAddress> InTurns(QList<QHostAddress> addresses) {
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

std::unique_ptr<QTcpSocket> ConnectToAny(const QList<QHostAddress>& addresses, quint16 port,
                                         const EventWait& wait, QString& error) {
    const auto isIn = [](QAbstractSocket::SocketState state) {
        return [state](const std::unique_ptr<QTcpSocket>& attempt) { return attempt->state() == state; };
    };
    std::vector<std::unique_ptr<QTcpSocket>> attempts;
    const auto isConnected = isIn(QAbstractSocket::ConnectedState);
    const auto hasFailed = isIn(QAbstractSocket::UnconnectedState);
    // The alarm's event makes the wait look again.
    QTimer alarm;
    alarm.setSingleShot(true);
    alarm.setTimerType(Qt::PreciseTimer);
    QList<QHostAddress> left = InTurns(addresses);
    while (!left.isEmpty()) {
        attempts.push_back(std::make_unique<QTcpSocket>());
        // Ignores the proxy that the environment may name.
        attempts.back()->setProxy(QNetworkProxy::NoProxy);
        attempts.back()->connectToHost(left.takeFirst(), port);
        const QDeadlineTimer headStart =
            left.isEmpty() ? QDeadlineTimer(QDeadlineTimer::Forever) : QDeadlineTimer(HEAD_START);
        alarm.start(HEAD_START + std::chrono::milliseconds(1));
        const auto goesOn = [&] {
            return !headStart.hasExpired() && std::none_of(attempts.begin(), attempts.end(), isConnected) &&
                   !std::all_of(attempts.begin(), attempts.end(), hasFailed);
        };
        if (!wait(goesOn))
            return nullptr;
        const auto winner = std::find_if(attempts.begin(), attempts.end(), isConnected);
        if (winner != attempts.end())
            return std::move(*winner);
    }
    error = attempts.back()->errorString();
    return nullptr;
}
