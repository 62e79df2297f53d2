// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The report as text: for people, and for a monitoring system.
#pragma once

#include <QJsonObject>
#include <QString>

// The products of the report's JSON as a table whose columns line up in a terminal and, when it is explained,
// an explanation below it: of what the products have in common, and of each of them.
QString ReportText(const QJsonObject& report, bool isExplained);

// The "users" of the report's JSON as a table.
QString UsersText(const QJsonObject& report);

// The report's JSON as metrics, in the text format 0.0.4 of Prometheus. A version that was not checked has
// no vardo_product_update_available.
QString PrometheusText(const QJsonObject& report);
