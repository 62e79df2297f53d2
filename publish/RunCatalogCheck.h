// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The program VARDOCatalogCheck, but for its main function.
#pragma once

#include "publish/FolderProgram.h"

#include <QStringList>
#include <iosfwd>

// Checks the folder that the arguments name (the first one is the program's own name) and writes the findings
// to out, as lines or as JSON, and what goes wrong otherwise to err; both as UTF-8. Needs a QCoreApplication.
int RunCatalogCheck(const QStringList& arguments, std::ostream& out, std::ostream& err);
