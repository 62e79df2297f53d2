// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/Transfer.h"

#include <QCoreApplication>
#include <QUrl>

#include "net/CHttpAnswerParser.h"

namespace {

using Culprit = TransferRecord::Culprit;

struct Words {
    Q_DECLARE_TR_FUNCTIONS(FailureText)

public:
    // RFC 9110, 15.
    static QString Of(int status, bool isThroughProxy) {
        switch (status) {
            case 0:
                return tr("This address cannot be fetched");
            case QHttpResponseHeader::OK:
                return tr("The server's answer is empty");
            case 401:
            case 403:
                return tr("The server refuses access (%1)").arg(status);
            case 404:
            case 410:
                return tr("The server does not have the file (%1)").arg(status);
            case QHttpResponseHeader::PROXY_AUTHENTICATION_REQUIRED:
                return isThroughProxy ? tr("The proxy wants a user name and password")
                                      : tr("The server asks for a proxy's password (%1)").arg(status);
            default:
                return tr("The server cannot answer (%1)").arg(status);
        }
    }
    static QString NotStored(const QString& error) { return tr("The file cannot be stored: %1").arg(error); }
    static QString Proxy(const QString& host) { return tr("Proxy %1").arg(host); }
};

}  // namespace

QString FailureText(const TransferRecord& record) {
    const QString proxy = record.proxyHost.ToQString();
    const QString error = record.error.ToQString();
    if (record.culprit == Culprit::COMPUTER)
        return Words::NotStored(error);
    const bool isProxys = record.culprit == Culprit::PROXY && !error.isEmpty();
    const QString host = isProxys ? Words::Proxy(proxy) : QUrl(record.url.ToQString()).host();
    const QString reason = error.isEmpty() ? Words::Of(record.status, !proxy.isEmpty()) : error;
    return host.isEmpty() ? reason : host + ": " + reason;
}
