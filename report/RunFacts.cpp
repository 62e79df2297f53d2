// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/RunFacts.h"

#include "app/settings/CRecordKeeper.h"
#include "net/ProxyAddress.h"
#include "net/ProxyHandlerBase.h"
#include "platform/files/CTemporaryFolder.h"
#include "platform/settings/SettingsStore.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QJsonArray>
#include <QSysInfo>

namespace {

// The day of the last check; empty before the first one, and for a day outside of the years 0 to 9999.
QString LastCheck(const CRecordKeeper& keeper) {
    return keeper.GetLastChecked() == 0 ? QString()
                                        : QDate::fromJulianDay(keeper.GetLastChecked()).toString(Qt::ISODate);
}

QString Reason(const CRecordKeeper& keeper) {
    if (!keeper.GetCheckUpdates())
        return "automatic checks are switched off";
    const int days = keeper.GetInterval();
    const QString interval = QString("the interval is %1 %2").arg(days).arg(days == 1 ? "day" : "days");
    const QString day = LastCheck(keeper);
    const QString last = keeper.GetLastChecked() == 0 ? "there was no check yet"
                         : day.isEmpty()              ? "the stored day of the last check is damaged"
                                                      : "the last check was on " + day;
    return last + "; " + interval +
           (IsUserStoreWritable() ? "" : "; the settings cannot be written, so that no check is remembered");
}

QString StoredProxy() {
    ProxyHandlerBase handler;
    handler.LoadProxySettings();
    CAtlString host;
    CAtlString ignored;
    int port = 0;
    handler.GetProxySettings(host, port, ignored, ignored);
    return ProxyAddressText(WithoutUser(host), port);
}

}  // namespace

QJsonObject RunFacts() {
    return {{"schema", 1},
            {"host", QSysInfo::machineHostName()},
            {"user", CTemporaryFolder::UserName().ToQString()},
            {"time", QDateTime::currentDateTimeUtc().toString(Qt::ISODate)},
            {"version", QCoreApplication::applicationVersion()}};
}

QJsonObject SettingsFacts() {
    CRecordKeeper keeper;
    keeper.Load();
    return {{"enabled", keeper.GetCheckUpdates()},
            {"interval", keeper.GetInterval()},
            {"lastChecked", LastCheck(keeper)},
            {"proxy", StoredProxy()},
            {"policy", QJsonArray::fromStringList(keeper.GetPolicy().names)}};
}

QJsonObject SilentCheckFacts(const QDate& today) {
    CRecordKeeper keeper;
    keeper.Load();
    return {{"due", keeper.IsCheckDue(today)}, {"reason", Reason(keeper)}};
}
