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

// Serves the thread's events while the given function answers true; false when it gave up earlier.
using EventWait = boost::function<bool(const boost::function<bool()>&)>;

// The addresses with IPv4 and IPv6 in turns, and otherwise in the given order.
QList<QHostAddress> InTurns(QList<QHostAddress> addresses);

// Tries the addresses in turns, and gives each a head start before the next joins it; the first connection
// wins (RFC 8305). So an address that never answers costs a moment and not the fetch. Null when the wait gave
// up, and when all addresses have failed: then error is that of the last one.
std::unique_ptr<QTcpSocket> ConnectToAny(const QList<QHostAddress>& addresses, quint16 port,
                                         const EventWait& wait, QString& error);
