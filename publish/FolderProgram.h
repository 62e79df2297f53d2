// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the programs that take a folder of published files have in common.
#pragma once

#include <QString>
#include <QStringList>
#include <boost/function.hpp>
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

// What such a program says of itself.
struct ProgramTexts {
    const char* name;
    const char* usage;
    const char* help;
};

// What every such program may be asked for.
struct CommonOptions {
    bool isHelp = false;
    bool isVersion = false;
    // Why the arguments make no sense; empty when they do, or do not matter.
    QString problem{};
};

// Says on err what is wrong with the arguments, and how the program is used. The exit status for that.
int RefuseUsage(const ProgramTexts& texts, const QString& problem, std::ostream& err);

// Does what the options ask for, or else the work, which gives the exit status. EXIT_ERRORS, with a word on
// err, when out could not be written.
int RunProgram(const ProgramTexts& texts, const CommonOptions& options, const boost::function<int()>& work,
               std::ostream& out, std::ostream& err);
