// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/RowWidgets.h"

#include <QLinearGradient>
#include <QProgressBar>
#include <QVBoxLayout>

QTableWidgetItem* MakeCell() {
    auto* cell = new QTableWidgetItem;
    cell->setFlags(Qt::ItemIsEnabled);
    return cell;
}

QTableWidgetItem* MakeCentredCell() {
    QTableWidgetItem* cell = MakeCell();
    cell->setTextAlignment(Qt::AlignCenter);
    return cell;
}

QPushButton* MakeRowButton(const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName("rowButton");
    button->setEnabled(false);
    button->setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Preferred);
    return button;
}

QWidget* MakeBusyIndicator(const QBrush& base) {
    auto* indicator = new QWidget;
    auto* layout = new QVBoxLayout(indicator);
    auto* bar = new QProgressBar;
    bar->setObjectName("busyBar");
    bar->setRange(0, 0);
    bar->setTextVisible(false);
    QPalette palette = bar->palette();
    for (const auto role : {QPalette::Window, QPalette::Mid, QPalette::Dark, QPalette::Light,
                            QPalette::Shadow, QPalette::Midlight})
        palette.setBrush(role, base);
    bar->setPalette(palette);
    layout->addWidget(bar);
    return indicator;
}

QBrush MakeHighlightBrush(const QColor& base) {
    constexpr int FADED_AFTER = 300;
    QLinearGradient gradient(0, 0, FADED_AFTER, 0);
    gradient.setColorAt(0, QColor(0, 50, 255, 50));
    gradient.setColorAt(1, base);
    return gradient;
}
