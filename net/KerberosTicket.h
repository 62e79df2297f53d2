// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Logging in at a proxy with the ticket of the user's session.
#pragma once

#include <QByteArray>
#include <QString>

// The value of the field "Proxy-Authorization" for Negotiate (RFC 4559, 4.1) that shows the proxy on that
// host the user's Kerberos ticket; empty when the user has none for it. May ask a server on the network, and
// takes as long as Kerberos allows that (krb5.conf(5)). Any thread.
QByteArray AnswerWithTicket(const QString& host);
