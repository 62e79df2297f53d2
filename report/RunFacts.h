// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The facts of a report besides its products, and those of every user of the machine; docs/report.schema.json
// has the members.
#pragma once

#include "platform/desktop/IEnvironment.h"

#include <QDate>
#include <QDeadlineTimer>
#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>
#include <boost/shared_ptr.hpp>

// The place, time and user of the report: "schema", "host", "user", "time" and "version".
QJsonObject RunFacts();
// The user's settings, as they count: "enabled", "interval", "lastChecked", "proxy" and "policy". The proxy
// bears no user name and no password.
QJsonObject SettingsFacts();
// Whether a silent check is "due" on a day, and the "reason", by the settings as they are.
QJsonObject SilentCheckFacts(const QDate& today);

// For root: an object for each user with settings or a product list in the home: "user", "list", "settings"
// and "silentCheck", as the report has them for its own user. Each home is read by a process with its user's
// rights alone, which is given up after a few seconds, so that nothing in a home can make root read or wait
// for what it should not. Before the process has threads, and before it reads settings of its own.
// The names of users whose home took too long, or had its turn only after the end, go to unread.
QJsonArray UsersFacts(const boost::shared_ptr<IEnvironment>& environment, const QDeadlineTimer& end,
                      QStringList& unread);
