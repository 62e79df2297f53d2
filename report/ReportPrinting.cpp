// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/ReportPrinting.h"

#include "products/CExplanation.h"
#include "report/CTextTable.h"

#include <QJsonArray>
#include <QJsonValue>

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

QString Explanations(const QJsonArray& rows, const QJsonObject& report) {
    QString text = '\n' + CommonExplanation(report);
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

QString ReportText(const QJsonObject& report, bool isExplained) {
    const QJsonArray rows = report["products"].toArray();
    return Table(rows) + (isExplained ? Explanations(rows, report) : QString());
}

QString UsersText(const QJsonObject& report) {
    CTextTable table({"USER", "CHECKS", "INTERVAL", "LAST CHECK", "PROXY", "LIST VERSION", "LIST"});
    const QJsonArray users = report["users"].toArray();
    for (const QJsonValue user : users)
        table.AddRow({user["user"].toString(), user["settings"]["enabled"].toBool() ? "on" : "off",
                      QString::number(user["settings"]["interval"].toInt()),
                      user["settings"]["lastChecked"].toString(), user["settings"]["proxy"].toString(),
                      user["list"]["version"].toString(), user["list"]["file"].toString()});
    return table.ToText();
}
