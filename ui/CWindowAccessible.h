// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What a screen reader sees of a window with widgets in the cells of a table.
#pragma once

#include <QAccessibleWidget>

class QAbstractItemView;

// The children of a dialog as Qt has them, and one more: the viewport of its table, whose children are the
// widgets in the table's cells. Qt (6.4) knows only the cells as children of a table, so those widgets could
// only be reached by focus. GUI thread only; Qt owns it for as long as the window lives.
class CWindowAccessible : public QAccessibleWidget {
public:
    // The window must outlive it and own the table.
    CWindowAccessible(QWidget& window, const QAbstractItemView& table);

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

private:
    QAccessibleInterface* Viewport() const;

    const QAbstractItemView& table_;
};
