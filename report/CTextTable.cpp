// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/CTextTable.h"

#include "platform/text/PrintableText.h"

#include <algorithm>
#include <cwchar>

#include <locale.h>

namespace {

// The thread's character types are those of UTF-8 for the length of a scope.
class CUtf8Locale {
public:
    CUtf8Locale() {
        // For the length of the process: making it takes longer than all else here.
        static const locale_t UTF8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        previous_ = uselocale(UTF8);
    }
    ~CUtf8Locale() { uselocale(previous_); }
    CUtf8Locale(const CUtf8Locale&) = delete;
    CUtf8Locale& operator=(const CUtf8Locale&) = delete;

private:
    locale_t previous_;
};

// The places that the text takes in a terminal, as of wcwidth(3) in UTF-8, whatever the locale.
int TerminalWidth(const QString& text) {
    const CUtf8Locale utf8;
    int width = 0;
    for (const char32_t ch : text.toUcs4())
        width += std::max(wcwidth(static_cast<wchar_t>(ch)), 0);
    return width;
}

}  // namespace

void CTextTable::AddRow(const QStringList& cells) {
    QStringList row;
    for (const QString& cell : cells)
        row << (cell.isEmpty() ? QString("-") : Printable(Cut(cell)));
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
