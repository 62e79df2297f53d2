// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Ports of 127.0.0.1, for servers that cannot say which one the system gave them.
#pragma once

#include <QHostAddress>
#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>

// A port on which nothing listens now; the system chooses it.
inline int UnusedPort() {
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

// Whether something accepts connections on a port.
inline bool IsListening(int port) {
    constexpr int LIMIT_MS = 1000;
    QTcpSocket socket;
    socket.setProxy(QNetworkProxy(QNetworkProxy::NoProxy));
    socket.connectToHost(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(port));
    return socket.waitForConnected(LIMIT_MS);
}
