// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// One request and its answer, whatever carries them.
#pragma once

#include "net/QHttpResponseHeader.h"

#include <QObject>

class QNetworkProxy;
class QNetworkRequest;

// For one GET. Lives on one thread, whose event loop must run; reports only from there, and nothing before
// Start has returned. After Abort or Finished it reports nothing more.
class IHttpExchange : public QObject {
    Q_OBJECT

public:
    // The text for an answer that is not whole, or too much.
    static QString BadAnswer();

    // Sends the request to its http address, directly (QNetworkProxy::NoProxy) or through an HTTP proxy.
    virtual void Start(const QNetworkRequest& request, const QNetworkProxy& proxy) = 0;
    virtual void Abort() = 0;

signals:
    // Once, before the body; not when there is no answer.
    void HeaderReceived(const QHttpResponseHeader& header);
    // The next bytes of the body.
    void BodyReceived(const QByteArray& bytes);
    // error is empty when the answer has arrived whole, whatever its status.
    void Finished(const QString& error);
};
