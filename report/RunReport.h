// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// From the process's arguments to its exit status.
#pragma once

// Reports what is installed and whether it is up to date, or says what is wrong with the arguments. Needs no
// display, asks nobody anything, takes no lock and writes no settings. The exit status; once per process.
int RunReport(int argc, char** argv);
