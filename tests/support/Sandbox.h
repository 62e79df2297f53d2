// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Keeps tests away from the real machine.
#pragma once

// Moves the process, and all that it starts later, into namespaces of its own: an empty /tmp and an empty
// /dev/shm (where proxies keep memory under fixed names) that vanish with the last process, and System V
// semaphores of its own. Then points HOME and the XDG variables into that /tmp, removes the variables that
// name a desktop, a proxy or languages, and sets the locale to C.UTF-8 and the umask to 022. Call it first in
// main, before any thread. On failure it prints the reason and the remedy, and ends the process with 1.
void EnterSandbox();
