// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What a report says besides its products; docs/report.schema.json has the members.
#pragma once

#include <QDate>
#include <QJsonObject>

// Where, when and for whom the report was made: "schema", "host", "user", "time" and "version".
QJsonObject RunFacts();
// The user's settings, as they count: "enabled", "interval", "lastChecked", "proxy" and "policy". The proxy
// bears no user name and no password.
QJsonObject SettingsFacts();
// Whether a silent check is "due" on a day, and the "reason", by the settings as they are.
QJsonObject SilentCheckFacts(const QDate& today);
