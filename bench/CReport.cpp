// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "CReport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

namespace {

constexpr int NAME_WIDTH = 46;
constexpr int NUMBER_WIDTH = 12;
constexpr int REFERENCE_WIDTH = 34;

QString Number(double value) {
    return QString::number(value, 'g', 4);
}

QString Line(const QString& name, const QString& ours, const QString& reference, const QString& ratio,
             const QString& bound, const QString& reached) {
    return name.leftJustified(NAME_WIDTH) + ours.rightJustified(NUMBER_WIDTH) + "  " +
           reference.leftJustified(REFERENCE_WIDTH) + ratio.rightJustified(8) + bound.rightJustified(8) +
           "  " + reached + '\n';
}

QString Row(const Figure& figure) {
    if (!figure.leftOut.isEmpty())
        return Line(figure.bound.name, "", "left out: " + figure.leftOut, "", "", "");
    const bool compared = figure.reference > 0;
    const QString reference =
        compared ? QString(figure.bound.reference) + ": " + Number(figure.reference) : QString();
    return Line(figure.bound.name, Number(figure.ours) + ' ' + figure.bound.unit, reference,
                compared ? Number(figure.Ratio()) : QString(), Number(figure.bound.ratio),
                figure.IsReached() ? "yes" : "NO");
}

QJsonObject Object(const Figure& figure) {
    QJsonObject object{{"name", figure.bound.name}};
    if (!figure.leftOut.isEmpty()) {
        object["leftOut"] = figure.leftOut;
        return object;
    }
    object["unit"] = figure.bound.unit;
    object["value"] = figure.ours;
    if (figure.reference > 0) {
        object["reference"] = figure.bound.reference;
        object["referenceValue"] = figure.reference;
        object["ratio"] = figure.Ratio();
    }
    object["bound"] = figure.bound.ratio;
    object["reached"] = figure.IsReached();
    return object;
}

}  // namespace

QString CReport::AsTable() const {
    QString table = Line("figure", "median", "reference", "ratio", "bound", "reached");
    for (const Figure& figure : figures_)
        table += Row(figure);
    return table;
}

QString CReport::AsJson() const {
    QJsonArray array;
    for (const Figure& figure : figures_)
        array.append(Object(figure));
    return QJsonDocument(array).toJson();
}

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}
