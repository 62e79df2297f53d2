// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/CElidedNameDelegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>

bool CElidedNameDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                    const QStyleOptionViewItem& option, const QModelIndex& index) {
    const bool elided = sizeHint(option, index).width() > option.rect.width();
    if (event->type() != QEvent::ToolTip || !elided)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    // Escaped, because a tool tip takes markup and a name is none.
    QToolTip::showText(event->globalPos(), index.data().toString().toHtmlEscaped(), view->viewport());
    return true;
}
