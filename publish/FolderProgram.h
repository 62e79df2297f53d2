// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the programs that take a folder of published files have in common.
#pragma once

#include <QString>
#include <QStringList>
#include <iosfwd>

// What such a program ends with.
enum CatalogExit {
    EXIT_CLEAN = 0,
    EXIT_WARNINGS = 1,
    EXIT_ERRORS = 2,
    // As sysexits.h has it.
    EXIT_WRONG_USAGE = 64,
};

// The folder that is worked on, and what of it is published where.
struct FolderArguments {
    QString folder{};
    // Empty when the product lists in the folder are to say.
    QString siteAddress{};
    // Below the folder, or the same.
    QString siteFolder{};
    // Why the arguments make no sense; empty when they do.
    QString problem{};
};

// Takes a folder, and a site as the option --site has it: empty, "ADDRESS" or "ADDRESS=FOLDER".
FolderArguments ReadFolder(const QStringList& folders, const QString& site);

// Says on err, in the name of the program, what is wrong with its arguments and how it is used. The exit
// status for that.
int RefuseUsage(const char* program, const QString& problem, const char* usage, std::ostream& err);

// The exit status of a program that is about to end with status: EXIT_ERRORS, with a word on err, when its
// output could not be written.
int Finish(const char* program, int status, std::ostream& out, std::ostream& err);
