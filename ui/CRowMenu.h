// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the user can do with a row besides pressing its button.
#pragma once

#include "products/IProduct.h"

#include <QMenu>
#include <QObject>
#include <QTableWidget>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

// Gives the table's rows a menu (right mouse button, Menu key, Shift+F10; by keyboard that of the focused
// button's row, or of the current one) and lets Ctrl+C copy them all. It belongs to the table. GUI thread
// only.
class CRowMenu : public QObject {
public:
    // An item, which lives as long as its menu, even when the rows are built anew meanwhile.
    struct Item {
        boost::shared_ptr<IProduct> product;
        unsigned item = 0;
    };
    // What it asks of the window.
    struct Window {
        // The item of a row; its product is null when the row has no item.
        boost::function<Item(int)> itemOf;
        // The texts of a row; and of all of them.
        boost::function<QString(int)> textOf;
        boost::function<QString()> allText;
        // Tells the user why the row is as it is.
        boost::function<void(const Item&)> explain;
        // The user skips the version, or takes that back.
        boost::function<void(const Item&)> skippingChanged;
    };

    CRowMenu(QTableWidget& table, Window window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // The row with the keyboard's focus; negative when there is no row.
    int FocusedRow() const;
    void OpenOnName(int row);
    void Open(int row, const QPoint& globalPosition);
    void AddSkipping(QMenu& menu, const Item& item);

    QTableWidget& table_;
    Window window_;
};
