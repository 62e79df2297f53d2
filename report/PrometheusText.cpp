// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/ReportPrinting.h"

#include "platform/text/PrintableText.h"

#include <QDateTime>
#include <QJsonArray>
#include <QStringList>
#include <algorithm>
#include <map>

namespace {

// By their labels: the same labels twice would make the whole text unreadable.
using Samples = std::map<QString, qint64>;

// The members of the object as labels of the same names.
QString Labels(const QJsonObject& object, const QStringList& names) {
    QStringList labels;
    for (const QString& name : names) {
        QString value = Printable(Cut(object[name].toString()));
        value.replace('\\', "\\\\").replace('"', "\\\"");
        labels << name + "=\"" + value + '"';
    }
    return '{' + labels.join(',') + '}';
}

QString Metric(const QString& name, const char* help, const Samples& samples) {
    if (samples.empty())
        return {};
    QString text = "# HELP " + name + ' ' + help + "\n# TYPE " + name + " gauge\n";
    for (const auto& [labels, value] : samples)
        text += name + labels + ' ' + QString::number(value) + '\n';
    return text;
}

}  // namespace

QString PrometheusText(const QJsonObject& report) {
    static const QStringList UNKNOWN{"failed", "not checked"};
    static const QStringList LEFT_OUT{"notice", "dismissed", "not installed"};
    Samples updates;
    Samples failures;
    const QJsonArray products = report["products"].toArray();
    for (const QJsonValue product : products) {
        const QJsonObject row = product.toObject();
        const QString state = row["state"].toString();
        if (LEFT_OUT.contains(state))
            continue;
        if (!UNKNOWN.contains(state))
            updates[Labels(row, {"key", "name", "installed", "latest"})] = state == "update" ? 1 : 0;
        qint64& failed = failures[Labels(row, {"key"})];
        failed = std::max<qint64>(failed, state == "failed" ? 1 : 0);
    }
    const QJsonValue settings = report["settings"];
    const QDate last = QDate::fromString(settings["lastChecked"].toString(), Qt::ISODate);
    return Metric("vardo_product_update_available", "Whether there is a newer version.", updates) +
           Metric("vardo_product_check_failed", "Whether the product's check failed.", failures) +
           Metric("vardo_list_version_info", "The product list in use, and the site's when it is newer.",
                  {{Labels(report["list"].toObject(), {"version", "newer"}), 1}}) +
           Metric("vardo_last_check_timestamp_seconds",
                  "The day of the update program's last check; 0 when there was none.",
                  {{"", last.isValid() ? last.startOfDay(Qt::UTC).toSecsSinceEpoch() : 0}}) +
           Metric("vardo_checks_enabled", "Whether automatic checks are switched on.",
                  {{"", settings["enabled"].toBool() ? 1 : 0}});
}
