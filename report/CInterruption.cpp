// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/CInterruption.h"

#include <sys/signalfd.h>
#include <unistd.h>

namespace {

bool IsIgnored(int signal) {
    struct sigaction action {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

sigset_t Interruptions() {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : {SIGTERM, SIGINT})
        if (!IsIgnored(signal))
            sigaddset(&set, signal);
    return set;
}

// From now on they wait for a reader of the descriptor (signalfd(2)).
int OpenInterruptions(sigset_t& previous) {
    const sigset_t set = Interruptions();
    pthread_sigmask(SIG_BLOCK, &set, &previous);
    return signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
}

}  // namespace

CInterruption::CInterruption(const std::function<void()>& interrupted)
    : signals_(OpenInterruptions(previous_)), notifier_(signals_.Get(), QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, [this, interrupted] {
        signalfd_siginfo signal{};
        if (read(signals_.Get(), &signal, sizeof signal) == sizeof signal)
            interrupted();
    });
}

CInterruption::~CInterruption() {
    pthread_sigmask(SIG_SETMASK, &previous_, nullptr);
}
