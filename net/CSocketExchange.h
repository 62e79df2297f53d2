// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A request over a connection of its own.
#pragma once

#include "net/CHostConnection.h"
#include "net/CHttpAnswerReader.h"
#include "net/IHttpExchange.h"

#include <QByteArray>

// Costs a fraction of what Qt's network access manager does, has no thread, asks once and knows whether an
// answer is whole. It never answers a challenge: credentials travel in the request's fields or not at all.
class CSocketExchange : public IHttpExchange {
    Q_OBJECT

public:
    CSocketExchange();

    void Start(const QNetworkRequest& request, const QNetworkProxy& proxy) override;
    void Abort() override;

private:
    void OnOpened();
    void OnData();
    void OnClosed();
    void Finish(const QString& error);

    CHostConnection connection_;
    QByteArray request_;
    CHttpAnswerReader answer_;
    bool isOver_ = false;
};
