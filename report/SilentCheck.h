// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Whether a silent check is due for this user.
#pragma once

#include <QDate>
#include <QJsonObject>

// "due", and in "reason" why or why not, by the settings as they are.
QJsonObject SilentCheck(const QDate& today);
