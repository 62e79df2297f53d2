// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What a row of the product table is made of. GUI thread only. The caller owns the results and gives them to
// a table.
#pragma once

#include <QBrush>
#include <QPushButton>
#include <QTableWidgetItem>

// An empty read-only cell.
QTableWidgetItem* MakeCell();
// The same, with its text in the middle.
QTableWidgetItem* MakeCentredCell();

// A disabled button with that text, named "rowButton".
QPushButton* MakeRowButton(const QString& text);

// An endless progress bar (named "busyBar") for a cell; base is the cell's background.
QWidget* MakeBusyIndicator(const QBrush& base);

// A faint blue at the cell's left edge that has faded into base after 300 pixels.
QBrush MakeHighlightBrush(const QColor& base);
