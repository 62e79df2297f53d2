// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Shows in full what a cell has no room for.
#pragma once

#include <QStyledItemDelegate>

// A delegate whose tool tip is the cell's whole text, shown only where the cell elides it.
class CElidedNameDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};
