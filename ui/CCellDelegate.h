// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// How the texts of the product table are drawn.
#pragma once

#include <QStyledItemDelegate>

// Draws each text in its own direction, wherever the window begins: a date or a Latin name keeps the order of
// its words in a right-to-left window. The tool tip is the cell's own, as plain text, or else its whole
// text where the cell elides it.
class CCellDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
