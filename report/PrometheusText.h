// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The report for a monitoring system.
#pragma once

#include <QJsonObject>
#include <QString>

// The report's JSON as metrics, in the text format 0.0.4 of Prometheus. A version of which nobody knows
// whether it is the latest one has no vardo_product_update_available.
QString PrometheusText(const QJsonObject& report);
