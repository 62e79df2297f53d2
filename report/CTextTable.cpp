// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/CTextTable.h"

#include "report/PrintableText.h"

#include <algorithm>

void CTextTable::AddRow(const QStringList& cells) {
    QStringList row;
    for (const QString& cell : cells)
        row << (cell.isEmpty() ? QString("-") : Printable(cell));
    rows_.push_back(row);
}

QString CTextTable::ToText() const {
    std::vector<int> widths(static_cast<std::size_t>(rows_.front().size()));
    for (const QStringList& row : rows_)
        for (std::size_t column = 0; column < widths.size(); ++column)
            widths[column] = std::max(widths[column], TerminalWidth(row[static_cast<qsizetype>(column)]));
    QString text;
    for (const QStringList& row : rows_) {
        for (std::size_t column = 0; column < widths.size(); ++column) {
            const QString& cell = row[static_cast<qsizetype>(column)];
            text += cell;
            if (column + 1 < widths.size())
                text += QString(widths[column] - TerminalWidth(cell) + 2, ' ');
        }
        text += '\n';
    }
    return text;
}
