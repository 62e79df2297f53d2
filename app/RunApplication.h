// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The life of the process, from the command line to the tear-down.
#pragma once

// Parses the command line, sets up the application object, the language and the lock, runs the chosen action
// unless another copy runs or the display is missing, and takes everything down again. The arguments must
// stay valid as long as it runs.
void RunApplication(int argc, char** argv);
