// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Signals that end a run before its time.
#pragma once

#include "platform/files/CFileDescriptor.h"

#include <QSocketNotifier>
#include <functional>

#include <signal.h>

// A scope: while it lives, SIGTERM and SIGINT do not end the process. They call back instead, while the
// thread serves events. Signals that were ignored before stay ignored. Make it before other threads, which
// inherit the signal mask. GUI thread only.
class CInterruption {
public:
    explicit CInterruption(const std::function<void()>& interrupted);
    ~CInterruption();
    CInterruption(const CInterruption&) = delete;
    CInterruption& operator=(const CInterruption&) = delete;

private:
    sigset_t previous_{};
    CFileDescriptor signals_;
    QSocketNotifier notifier_;
};
