// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The report for people.
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

// The rows as a table whose columns line up in a terminal and, unless common is empty, an explanation below
// it: of what the products have in common, and of each of them.
QString ReportText(const QJsonArray& rows, const QJsonObject& common);
