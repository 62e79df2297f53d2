// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/FailureText.h"

#include "net/QHttpResponseHeader.h"

#include <QCoreApplication>
#include <QUrl>

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(FailureText)

public:
    // RFC 9110, 15.
    static QString Of(int status) {
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
                return tr("The proxy wants a user name and password");
            default:
                return tr("The server cannot answer (%1)").arg(status);
        }
    }
};

}  // namespace

QString FailureText(const TransferRecord& record) {
    const QString proxy = record.proxyHost.ToQString();
    // Whose fault it is: without an answer of anybody, the proxy has not been reached, or has not spoken.
    const bool isProxys = record.status == 0 && !proxy.isEmpty();
    const QString host = isProxys ? proxy : QUrl(record.url.ToQString()).host();
    const QString reason = record.error.IsEmpty() ? Words::Of(record.status) : record.error.ToQString();
    return host.isEmpty() || reason.contains(host) ? reason : host + QStringLiteral(": ") + reason;
}
