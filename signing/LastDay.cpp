// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "signing/LastDay.h"

#include <QDateTime>

QDate TodayInUtc() {
    return QDateTime::currentDateTimeUtc().date();
}

QDate ReadLastDay(const std::string& text) {
    return QDate::fromString(QString::fromStdString(text), QStringLiteral("yyyyMMdd"));
}

bool IsOver(const QDate& lastDay, const QDate& today) {
    return today > lastDay.addDays(1);
}
