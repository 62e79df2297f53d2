// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A request that Qt's network access manager carries.
#pragma once

#include "net/IHttpExchange.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>

// Answers the challenges of a proxy, Digest and NTLM among them, with the user and password of the proxy that
// it is given. Basic credentials it writes in Latin-1, and a body in chunks that was cut off it may take for
// whole.
class CManagerExchange : public IHttpExchange {
    Q_OBJECT

public:
    void Start(const QNetworkRequest& request, const QNetworkProxy& proxy) override;
    void Abort() override;

private:
    void OnHeader();
    void OnData();
    void OnFinished();

    // A fresh one for each request: it remembers credentials and connections.
    QNetworkAccessManager manager_;
    QNetworkReply* reply_ = nullptr;
    // Bytes of the body.
    qint64 received_ = 0;
};
