// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "support/MarkdownDocument.h"

#include <gtest/gtest.h>

#include "support/TemporaryTree.h"
#include "support/TextPrinting.h"

MarkdownDocument::MarkdownDocument(const char* path)
    : lines_(QString::fromStdString(ReadWholeFile(std::string(VARDO_SOURCE_DIR "/") + path)).split('\n')) {}

std::map<QString, QString> MarkdownDocument::Examples() const {
    std::map<QString, QString> examples;
    QString* example = nullptr;
    for (const QString& line : lines_)
        if (!line.startsWith("```")) {
            if (example)
                *example += line + '\n';
        } else if (example) {
            example = nullptr;
        } else {
            const QString title = line.section('"', 1, 1);
            EXPECT_NE(title, "") << "no title: " << line.toStdString();
            EXPECT_FALSE(examples.contains(title)) << title.toStdString();
            example = &examples[title];
        }
    return examples;
}

std::vector<QStringList> MarkdownDocument::Table(const char* name) const {
    std::vector<QStringList> rows;
    qsizetype line = lines_.indexOf(QString("<!-- table: %1 -->").arg(name));
    while (line >= 0 && !lines_.value(line).startsWith("|---"))
        ++line;
    while (line >= 0 && lines_.value(++line).startsWith('|')) {
        rows.push_back(QString(lines_[line]).remove('`').split('|').mid(1));
        for (QString& cell : rows.back())
            cell = cell.trimmed();
    }
    EXPECT_FALSE(rows.empty()) << name;
    return rows;
}
