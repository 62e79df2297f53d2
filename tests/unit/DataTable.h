// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Tables of cases that read better as texts than as C++.
#pragma once

#include "support/TemporaryTree.h"

#include <QStringList>
#include <vector>

// The text of a file of the source tree, read as UTF-8.
inline QString SourceText(const std::string& file) {
    return QString::fromStdString(ReadWholeFile(VARDO_SOURCE_DIR "/" + file));
}

// The lines of a file in tests/unit/data, cut into cells at "|", without the blanks around them. "(none)"
// stands for an empty cell. Skips empty lines and lines that begin with "#". Throws when there is no row.
inline std::vector<QStringList> DataTable(const std::string& file) {
    std::vector<QStringList> rows;
    for (const QString& line : SourceText("tests/unit/data/" + file).split('\n', Qt::SkipEmptyParts)) {
        if (line.startsWith('#'))
            continue;
        rows.push_back(line.split('|'));
        for (QString& cell : rows.back())
            cell = cell.trimmed() == "(none)" ? "" : cell.trimmed();
    }
    if (rows.empty())
        throw std::runtime_error("no rows in " + file);
    return rows;
}
