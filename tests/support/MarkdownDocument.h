// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What a document of the project says in a form that tests can hold it to.
#pragma once

#include <QString>
#include <QStringList>
#include <map>
#include <vector>

// A Markdown file. Examples are fenced blocks with a title (```xml title="share/products.xml"); tables for
// tests follow a comment with their name (<!-- table: versions -->).
class MarkdownDocument {
public:
    // The path is relative to the source tree.
    explicit MarkdownDocument(const char* path);

    // The examples by their titles. A fenced block without a title, or with the title of another one, fails
    // the test.
    std::map<QString, QString> Examples() const;
    // The rows of a table, cell by cell, without backquotes and outer blanks. A table that is missing or
    // empty fails the test.
    std::vector<QStringList> Table(const char* name) const;

private:
    QStringList lines_;
};
