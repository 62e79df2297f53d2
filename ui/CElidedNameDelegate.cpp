// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/CElidedNameDelegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>

bool CElidedNameDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                    const QStyleOptionViewItem& option, const QModelIndex& index) {
    const bool elided = sizeHint(option, index).width() > option.rect.width();
    if (event->type() != QEvent::ToolTip || !elided)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    // A tool tip takes markup, and a name is none.
    const QString text = Qt::convertFromPlainText(index.data().toString(), Qt::WhiteSpaceNormal);
    QToolTip::showText(event->globalPos(), text, view->viewport());
    return true;
}
