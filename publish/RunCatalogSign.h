// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The program VARDOCatalogSign, but for its main function.
#pragma once

#include "publish/FolderProgram.h"

#include <QStringList>
#include <iosfwd>

// Signs the published files of the folder that the arguments name (the first one is the program's own name),
// writes a line for each to out, and what goes wrong to err; both as UTF-8. Asks on err for the password of a
// key that has one, and reads it from standard input. One of CatalogExit (EXIT_ERRORS: nothing was signed, or
// not all). Needs a QCoreApplication.
int RunCatalogSign(const QStringList& arguments, std::ostream& out, std::ostream& err);
