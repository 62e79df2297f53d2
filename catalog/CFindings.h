// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What was found in published files.
#pragma once

#include "catalog/FindingCodes.h"

#include <QByteArray>
#include <QString>
#include <vector>

struct Finding {
    // As it was given or found, in the form that a compiler would print.
    QString file;
    // From 1.
    int line = 1;
    FindingCode code;
    // In English, in one line.
    QString text;
};

// Collects findings, and puts them into the forms in which they leave the program.
class CFindings {
public:
    // A line of 0 or less, for what concerns a whole file, counts as its first.
    void Add(const QString& file, int line, const FindingCode& code, const QString& text);

    // Sorted by file and line; findings of one line keep their order.
    std::vector<Finding> Sorted() const;
    // Of all files.
    int Count(Severity severity) const;
    // Of errors in one file.
    int CountErrors(const QString& file) const;

    // "2 errors, 1 warning", or "no errors, no warnings".
    QString Summary() const;
    // Without the notes.
    CFindings WithoutNotes() const;

    // One line each, "file:line: severity: text [code]", UTF-8.
    QByteArray ToText() const;
    // An array of objects with "file", "line", "severity", "code" and "text", UTF-8.
    QByteArray ToJson() const;

private:
    std::vector<Finding> findings_;
};
