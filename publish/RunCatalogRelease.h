// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The program VARDOCatalogRelease, but for its main function.
#pragma once

#include "publish/FolderProgram.h"

#include <QStringList>
#include <iosfwd>

// Signs the installer of the program and the published files of the folder that the arguments name (the first
// one is the program's own name), or writes the files of a new product. Writes a line for each file to out,
// in the order of an upload, and what goes wrong to err; both as UTF-8. Asks on err for the passwords of keys
// that have one, and reads them from standard input. One of CatalogExit (EXIT_ERRORS: not all was signed).
// Needs a QCoreApplication.
int RunCatalogRelease(const QStringList& arguments, std::ostream& out, std::ostream& err);
