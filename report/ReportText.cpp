// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/ReportText.h"

#include "products/ExplanationText.h"
#include "report/CTextTable.h"

#include <QJsonArray>
#include <QJsonValue>
#include <QStringList>

namespace {

QString Table(const QJsonArray& rows) {
    if (rows.isEmpty())
        return "No product of the list is installed.\n";
    CTextTable table({"NAME", "INSTALLED", "LATEST", "STATE", "KEY", "PAGE"});
    for (const QJsonValue row : rows)
        table.AddRow({row["name"].toString(), row["installed"].toString(), row["latest"].toString(),
                      row["state"].toString(), row["key"].toString(), row["page"].toString()});
    return table.ToText();
}

QString Explanations(const QJsonArray& rows, const QJsonObject& common) {
    QString text = '\n' + CommonExplanation(common);
    QString previous;
    for (const QJsonValue row : rows) {
        // The versions of a product follow one another, and share their explanation.
        if (const QString key = row["key"].toString(); key != previous || key.isEmpty()) {
            text += '\n' + ExplanationText(row.toObject());
            previous = key;
        }
    }
    return text;
}

}  // namespace

QString ReportText(const QJsonArray& rows, const QJsonObject& common) {
    return Table(rows) + (common.isEmpty() ? QString() : Explanations(rows, common));
}
