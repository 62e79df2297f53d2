// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A table in a terminal.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

// Columns are as wide as their widest cell, as terminals show it: East Asian characters take two places,
// combining marks take no place. Characters that would control the terminal are replaced. Empty cells show
// "-".
class CTextTable {
public:
    explicit CTextTable(const QStringList& titles) : rows_{titles} {}

    // As many cells as there are titles.
    void AddRow(const QStringList& cells);
    // Line by line, without blanks at the ends.
    QString ToText() const;

private:
    std::vector<QStringList> rows_;
};
