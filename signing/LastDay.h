// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Until when a signature is good, as its trusted comment says it ("until:yyyyMMdd").
#pragma once

#include <QDate>
#include <string>

// Today's date in UTC.
QDate TodayInUtc();
// The day that a word's value names; invalid when it names none.
QDate ReadLastDay(const std::string& text);
// Whether a signature with that last day is over: from the second day after it on, for some clocks are ahead.
bool IsOver(const QDate& lastDay, const QDate& today);
