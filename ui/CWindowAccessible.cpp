// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/CWindowAccessible.h"

#include <QAbstractItemView>

CWindowAccessible::CWindowAccessible(QWidget& window, const QAbstractItemView& table)
    : QAccessibleWidget(&window, QAccessible::Dialog), table_(table) {}

int CWindowAccessible::childCount() const {
    return QAccessibleWidget::childCount() + 1;
}

QAccessibleInterface* CWindowAccessible::child(int index) const {
    return index == QAccessibleWidget::childCount() ? Viewport() : QAccessibleWidget::child(index);
}

int CWindowAccessible::indexOfChild(const QAccessibleInterface* child) const {
    return child && child == Viewport() ? QAccessibleWidget::childCount()
                                        : QAccessibleWidget::indexOfChild(child);
}

QAccessibleInterface* CWindowAccessible::Viewport() const {
    return QAccessible::queryAccessibleInterface(table_.viewport());
}
