// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// How the result of one product came about.
#pragma once

#include "net/Transfer.h"
#include "products/IDecisionObserver.h"
#include "products/Verdict.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

// Why a file does not count, in words; empty when it does.
QString VerdictText(Verdict verdict);

// Keeps what it is told, in the order of the telling, as it goes into the report; docs/administration.md says
// what is where. GUI thread only.
class CExplanation : public IDecisionObserver {
public:
    void OnLocalFile(const CVardoFilePath& file, Verdict verdict, const CVersionString& installed) override;
    void OnDisabler(const CAtlString& key, const CVersionString& installed, const CVersionStringRange& range,
                    bool disables) override;
    void OnRemoteFile(Verdict verdict) override;
    void OnOffer(const CVersionStringRange* range, const CUpdateEntry& offer) override;
    void OnCategory(const CAtlString& id, const CAtlString& installed, const CAtlString& published) override;
    void OnTransfer(const TransferRecord& record);

    QJsonObject ToJson() const;

private:
    QJsonArray files_;
    QJsonArray disablers_;
    QJsonArray requests_;
    QJsonArray categories_;
    QJsonObject answer_;
    QJsonObject offer_;
};
