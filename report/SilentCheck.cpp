// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/SilentCheck.h"

#include "app/settings/CRecordKeeper.h"

namespace {

QString Reason(const CRecordKeeper& keeper) {
    if (!keeper.GetCheckUpdates())
        return "automatic checks are switched off";
    const QString interval = QString("the interval is %1 days").arg(keeper.GetInterval());
    if (keeper.GetLastChecked() == 0)
        return "there was no check yet; " + interval;
    const QDate last = QDate::fromJulianDay(keeper.GetLastChecked());
    return QString("the last check was on %1; %2").arg(last.toString(Qt::ISODate), interval);
}

}  // namespace

QJsonObject SilentCheck(const QDate& today) {
    CRecordKeeper keeper;
    keeper.Load();
    return {{"due", keeper.IsCheckDue(static_cast<int>(today.toJulianDay()))}, {"reason", Reason(keeper)}};
}
