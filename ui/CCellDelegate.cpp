// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/CCellDelegate.h"

#include "ui/PlainText.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStyle>
#include <QToolTip>

bool CCellDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                              const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QString text = index.data(Qt::ToolTipRole).toString();
    if (text.isEmpty() && sizeHint(option, index).width() > option.rect.width())
        text = Isolated(index.data().toString());
    QToolTip::showText(event->globalPos(), AsHtml(text), view->viewport());
    return true;
}

// Settles the alignment before it takes the text's direction, so that the text stays on the window's side.
void CCellDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    // A tint fades into the table's present colour; the desktop may have turned dark since it was made.
    if (const QGradient* tint = option->backgroundBrush.gradient()) {
        QGradient present = *tint;
        present.setColorAt(1, option->palette.color(QPalette::Base));
        option->backgroundBrush = present;
    }
    // A tint begins where the eye does.
    if (option->direction == Qt::RightToLeft)
        option->backgroundBrush.setTransform(QTransform(-1, 0, 0, 1, option->rect.width(), 0));
    option->displayAlignment =
        QStyle::visualAlignment(option->direction, option->displayAlignment) | Qt::AlignAbsolute;
    option->direction = option->text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
}
