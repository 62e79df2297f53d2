// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the event loops of this process's threads are made of. Qt takes that from the environment, which the
// processes that are started from here shall find as it was.
#pragma once

#include <QProcessEnvironment>

// Makes the threads that start from now on do without GLib, which only the first one needs, for the desktop's
// own dialogs; what the user has set stays. A GLib context for each transfer took a tenth of the processor
// time of a check. Changes the environment, and so must be called while there is no other thread (setenv(3)).
void DoWithoutGLibInThreads();

// The environment for a process that is started from here. Any thread.
QProcessEnvironment EnvironmentOfChildren();
