// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The report for people.
#pragma once

#include <QJsonArray>
#include <QString>

// The rows as a table whose columns line up in a terminal and, explained, a paragraph for each product below
// it.
QString ReportText(const QJsonArray& rows, bool isExplained);
