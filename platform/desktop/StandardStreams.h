// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Standard streams that the starter closed, or that nobody reads.
#pragma once

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

// Writing to such a stream, or beyond the limit of a file's size (setrlimit(2), RLIMIT_FSIZE), then fails and
// does nothing else. To be called first of all.
//
// From here on a write to a pipe or socket that nobody reads fails with EPIPE in place of ending the process
// (signal(7)); processes that are started with QProcess have the signal as usual. A closed stream becomes
// one that takes no byte: else the next file or socket that is opened gets its number, and what is printed.
inline void SecureStandardStreams() {
    std::signal(SIGPIPE, SIG_IGN);
    // A handler ends when a program is started (execve(2)); "ignore" would not.
    std::signal(SIGXFSZ, [](int) {});
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
        if (fcntl(stream, F_GETFD) == -1)
            open("/dev/null", O_RDONLY);
}
