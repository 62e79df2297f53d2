// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/Transfer.h"

#include <QObject>
#include <QUrl>

#include "net/QHttpResponseHeader.h"

namespace {

using Culprit = TransferRecord::Culprit;

// RFC 9110, 15.
constexpr int NOT_FOUND = 404;
constexpr int GONE = 410;

// A proxy gives such an answer of its own, too.
bool IsOfEither(int status) {
    return status > QHttpResponseHeader::OK && status != NOT_FOUND && status != GONE &&
           status != QHttpResponseHeader::PROXY_AUTHENTICATION_REQUIRED;
}

// RFC 9110, 15.
QString StatusText(int status, bool isThroughProxy) {
    switch (status) {
        case 0:
            return QObject::tr("This address cannot be fetched");
        case QHttpResponseHeader::OK:
            return QObject::tr("The server's answer is empty");
        case 401:
        case 403:
            return QObject::tr("The server refuses access (%1)").arg(status);
        case NOT_FOUND:
        case GONE:
            return QObject::tr("The server does not have the file (%1)").arg(status);
        case QHttpResponseHeader::PROXY_AUTHENTICATION_REQUIRED:
            return isThroughProxy ? QObject::tr("The proxy wants a user name and password")
                                  : QObject::tr("The server asks for a proxy's password (%1)").arg(status);
        case 301:
        case 302:
        case 303:
        case 307:
        case 308:
            return QObject::tr("The server sends programs elsewhere (%1)").arg(status);
        default:
            return QObject::tr("The server cannot answer (%1)").arg(status);
    }
}

}  // namespace

QString FailureText(const TransferRecord& record) {
    const QString proxy = record.proxyHost.ToQString();
    const QString error = record.error.ToQString();
    if (record.culprit == Culprit::COMPUTER)
        return QObject::tr("The file cannot be stored: %1").arg(error);
    QString host = QUrl(record.url.ToQString()).host();
    if (record.culprit == Culprit::PROXY && !error.isEmpty())
        host = QObject::tr("Proxy %1").arg(proxy);
    else if (!proxy.isEmpty() && error.isEmpty() && IsOfEither(record.status))
        host = QObject::tr("%1 or proxy %2").arg(host, proxy);
    const QString reason = error.isEmpty() ? StatusText(record.status, !proxy.isEmpty()) : error;
    return host.isEmpty() ? reason : host + ": " + reason;
}
