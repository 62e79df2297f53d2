// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The main window's table: one row per item, with its versions and its button.
#pragma once

#include "net/events/Qtfier.h"

#include <QBrush>
#include <QCoreApplication>
#include <QPushButton>
#include <QTableWidget>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>
#include <vector>

// Arranges a table that it does not own and that outlives it. Knows rows and texts, but not products. GUI
// thread only. Every operation on a row needs HasRow. Rows may be rebuilt, and the check may end, while a
// button's action runs.
class CProductTable {
    Q_DECLARE_TR_FUNCTIONS(MainWindow)

public:
    // What a row's button does; the result is ignored.
    using Action = boost::function<bool()>;

    // The table must outlive this object.
    explicit CProductTable(QTableWidget& table);

    // Removes all rows and sets the columns up.
    void Reset();
    // Appends a row and returns its index.
    int AddRow(const QString& name, const QString& installed);
    // How many pixels the column of names lacks for the longest name in it, if it may be `widest` pixels
    // wide. Looks at the first rows only, and passes over names that take further columns.
    int WidthThatNamesLack(int widest) const;
    bool HasRow(int row) const { return row >= 0 && row < table_.rowCount(); }
    // A disabled button, captioned "Current".
    void AddButton(int row, const Action& action);
    bool HasButton(int row) const { return Button(row) != nullptr; }
    // Does nothing in a row without a button.
    void SetButton(int row, const QString& caption, bool enabled);
    // Shows a busy bar until ShowLatest is called.
    void ShowBusy(int row);
    // In a row without any version, the name takes their columns too.
    void ShowLatest(int row, const QString& text);
    // Says in tool tips, and to screen readers, why the latest version is not shown, and why the row has no
    // use for its button. Empty texts say nothing.
    void ShowReasons(int row, const QString& latest, const QString& action);
    // The whole texts of the first three columns, with tabs between them.
    QString RowText(int row) const;
    // Scrolls to the row with that widget in one of its cells; does nothing for any other widget.
    void ScrollTo(const QWidget* widget);
    // Tints the row's name and scrolls to it.
    void Highlight(int row);

private:
    QPushButton* Button(int row) const;
    void MeasureColumns();
    void SetLatest(QTableWidgetItem& cell, const QString& text);
    void NameButton(int row, QPushButton& button) const;
    QWidget* FocusBefore(int row) const;

    QTableWidget& table_;
    std::vector<boost::shared_ptr<Qtfier>> rowActions_;
    QBrush highlight_;
};
