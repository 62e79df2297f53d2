// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Tells the user what a check has found: for one row, and for all of them.
#pragma once

#include "products/ItemState.h"

#include <QCoreApplication>
#include <QMap>
#include <QTime>

// Learns during a check why products could not be checked; asks the products for all else. Its texts are
// plain. GUI thread only.
class CCheckOutcome {
    Q_DECLARE_TR_FUNCTIONS(MainWindow)

public:
    // Forgets the last check, as a new one begins.
    void Forget();
    // The product's check failed at that time of day. A later reason takes the place of an earlier one.
    void OnFailed(const IProduct& product, const QString& reason, const QTime& time);
    // The newest list was refused.
    void OnListRefused(const QString& reason) { listRefusal_ = reason; }

    // Why the item's latest version is not available; empty when it is.
    QString WhyNotAvailable(const IProduct& product, unsigned item) const;
    // Why the item is not plainly current and its button leads to no update; else empty.
    QString Why(const IProduct& product, unsigned item) const;
    // How many updates there are, and what could not be checked, in one line.
    QString Summary(const IProduct::List& products) const;

private:
    struct Failure {
        QString reason;
        QTime time;
    };

    QString WhyFailed(const IProduct& product) const;
    QString FailureSummary(const IProduct::List& failed, int checkable) const;

    QMap<const IProduct*, Failure> failures_;
    QString listRefusal_;
};
