// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/CCellDelegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStyle>
#include <QTextDocument>
#include <QToolTip>

bool CCellDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                              const QModelIndex& index) {
    const bool elided = sizeHint(option, index).width() > option.rect.width();
    if (event->type() != QEvent::ToolTip || !elided)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    // A tool tip takes markup, and a name is none.
    const QString text = Qt::convertFromPlainText(index.data().toString(), Qt::WhiteSpaceNormal);
    QToolTip::showText(event->globalPos(), text, view->viewport());
    return true;
}

// The side of the cell stays that of the window: the alignment is settled before the direction is the text's.
void CCellDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->displayAlignment =
        QStyle::visualAlignment(option->direction, option->displayAlignment) | Qt::AlignAbsolute;
    option->direction = option->text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
}
