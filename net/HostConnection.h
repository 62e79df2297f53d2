// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A connection to a host that may have several addresses.
#pragma once

#include <QHostAddress>
#include <QList>
#include <QString>
#include <QTcpSocket>
#include <boost/function.hpp>
#include <chrono>
#include <memory>

// RFC 8305, 5.
inline constexpr std::chrono::milliseconds HEAD_START{250};

// Serves the thread's events while the given function returns true. Returns false when it gave up earlier.
using EventWait = boost::function<bool(const boost::function<bool()>&)>;

// Lets IPv4 and IPv6 addresses alternate, and otherwise keeps their order.
QList<QHostAddress> InTurns(QList<QHostAddress> addresses);

// Tries the addresses (at least one) in turns, and gives each a head start before the next joins it; the
// first connection wins (RFC 8305). So an address that never answers costs a moment and not the fetch. Null
// when the wait gave up, or when all addresses have failed: then error is the last one's text from Qt.
std::unique_ptr<QTcpSocket> ConnectToAny(const QList<QHostAddress>& addresses, quint16 port,
                                         const EventWait& wait, QString& error);
