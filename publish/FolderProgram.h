// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the programs that take a folder of published files have in common.
#pragma once

#include "catalog/CCatalog.h"

#include <QCommandLineParser>
#include <QString>
#include <QStringList>
#include <boost/function.hpp>
#include <iosfwd>

// The exit statuses of such a program.
enum {
    EXIT_CLEAN = 0,
    EXIT_WARNINGS = 1,
    EXIT_ERRORS = 2,
    // As sysexits.h has it.
    EXIT_WRONG_USAGE = 64,
};

// What the command line of every such program says.
struct FolderArguments {
    bool isHelp = false;
    bool isVersion = false;
    // The folder that is worked on.
    QString folder{};
    // Where the site is published; empty when the product lists in the folder are to say.
    QString siteAddress{};
    // Below the folder, or the same.
    QString siteFolder{};
    // Why the arguments make no sense; empty when they do. Without effect beside isHelp and isVersion.
    QString problem{};

    // Reads the folder; only without a problem.
    CCatalog Read() const { return CCatalog(folder, siteAddress, siteFolder); }
};

// The options of every such program: --site takes "ADDRESS" or "ADDRESS=FOLDER".
QList<QCommandLineOption> FolderOptions();
// Takes these options, and the one folder that is left among the arguments.
FolderArguments TakeFolder(const QCommandLineParser& parser, const QStringList& folders);

// What such a program says of itself.
struct ProgramTexts {
    const char* name;
    const char* usage;
    const char* help;
};

// Says on err what is wrong with the arguments, and how to use the program. Returns the exit status.
int RefuseUsage(const ProgramTexts& texts, const QString& problem, std::ostream& err);

// Says on err why the program fails. Returns EXIT_ERRORS.
int Fail(const ProgramTexts& texts, const QString& problem, std::ostream& err);

// Does what the arguments ask for, or else the work, which gives the exit status. EXIT_ERRORS, with a word on
// err, when out could not be written. Says on err when the work reads in test mode (see CUpdateXmlReader).
int RunProgram(const ProgramTexts& texts, const FolderArguments& arguments,
               const boost::function<int()>& work, std::ostream& out, std::ostream& err);

// Checks the folder that the arguments name (the first one is the program's own name) and writes the findings
// to out, as lines or as JSON, and what goes wrong otherwise to err; both as UTF-8. Needs a QCoreApplication.
int RunCatalogCheck(const QStringList& arguments, std::ostream& out, std::ostream& err);

// Signs the published files of the folder that the arguments name (the first one is the program's own name),
// writes a line for each to out, and what goes wrong to err; both as UTF-8. Asks on err for the password of a
// key that has one, and reads it from standard input. One of these statuses (EXIT_ERRORS: nothing was signed,
// or not all). Needs a QCoreApplication.
int RunCatalogSign(const QStringList& arguments, std::ostream& out, std::ostream& err);

// Signs the installer of the program and the published files of the folder that the arguments name (the first
// one is the program's own name), or writes the files of a new product. Writes a line for each file to out,
// in the order of an upload, and what goes wrong to err; both as UTF-8. Asks on err for the passwords of keys
// that have one, and reads them from standard input. One of these statuses (EXIT_ERRORS: not all was signed).
// Needs a QCoreApplication.
int RunCatalogRelease(const QStringList& arguments, std::ostream& out, std::ostream& err);
