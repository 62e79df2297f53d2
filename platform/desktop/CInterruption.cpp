// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/desktop/CInterruption.h"

#include <QCoreApplication>
#include <QEvent>
#include <atomic>
#include <cerrno>

#include <sys/eventfd.h>
#include <unistd.h>

namespace {

// Where the handler reports signals.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): a handler gets nothing but the signal.
std::atomic<int> reports = -1;

// Calls only what a handler may (signal-safety(7)).
void Report(int /*signal*/) {
    const int error = errno;
    const eventfd_t one = 1;
    [[maybe_unused]] const ssize_t ignored = write(reports, &one, sizeof one);
    errno = error;
}

// Keeps the action that was set before.
void Handle(int signal, struct sigaction& previous) {
    struct sigaction action {};
    action.sa_handler = Report;
    action.sa_flags = SA_RESTART;
    sigaction(signal, nullptr, &previous);
    if (previous.sa_handler != SIG_IGN)
        sigaction(signal, &action, nullptr);
}

}  // namespace

CInterruption::CInterruption(const std::function<void()>& interrupted)
    : interrupted_(interrupted),
      signals_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      notifier_(signals_.Get(), QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, [this] { Deliver(); });
    QCoreApplication::instance()->installEventFilter(this);
    if (!signals_.IsOpen())
        return;
    reports = signals_.Get();
    Handle(SIGTERM, terminate_);
    Handle(SIGINT, interrupt_);
}

void CInterruption::Deliver() {
    eventfd_t count = 0;
    if (signals_.IsOpen() && eventfd_read(signals_.Get(), &count) == 0)
        interrupted_();
}

bool CInterruption::eventFilter(QObject* /*receiver*/, QEvent* event) {
    if (event->type() == QEvent::Quit)
        interrupted_();
    return false;
}

CInterruption::~CInterruption() {
    if (!signals_.IsOpen())
        return;
    sigaction(SIGTERM, &terminate_, nullptr);
    sigaction(SIGINT, &interrupt_, nullptr);
}
