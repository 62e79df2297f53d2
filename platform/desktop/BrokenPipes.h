// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Writing to a pipe or socket without a reader.
#pragma once

#include <csignal>

// From here on a write to a pipe or socket that nobody reads fails, with EPIPE, in place of ending the
// process (signal(7)). Processes that are started with QProcess have the signal as usual. To be called first
// of all.
inline void IgnoreBrokenPipes() {
    std::signal(SIGPIPE, SIG_IGN);
}
