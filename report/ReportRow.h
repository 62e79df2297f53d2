// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// One line of the report.
#pragma once

#include "products/ItemState.h"

#include <QJsonObject>
#include <QString>

// The facts about one installed version; unknown texts are empty.
struct ReportRow {
    QString name;
    QString key;
    QString installed;
    QString latest;
    ItemState state = ItemState::NOT_INSTALLED;
    // What the row's button in the update program would open; empty when there is no such button.
    QString page;
};

// The row of a product's item, as the update program would show it after a check, or without one.
ReportRow MakeRow(const IProduct& product, unsigned item, bool wasChecked);
// The row of a product that has no item.
ReportRow MakeRow(const IProduct& product);

// An entry of the report's "products"; docs/report.schema.json has the members.
QJsonObject ToJson(const ReportRow& row);
