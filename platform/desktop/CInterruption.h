// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Signals that end a run before its time.
#pragma once

#include "platform/files/CFileDescriptor.h"

#include <QSocketNotifier>
#include <functional>

#include <signal.h>

// A scope: while it lives, SIGTERM and SIGINT do not end the process. They call back instead, while the
// thread serves events. Signals that were ignored before stay ignored, and started programs have them as
// usual. When the system gives no descriptor, the signals end the process as ever. At most one lives at a
// time. GUI thread only. A signal that has not been served when the scope ends is lost, so call Deliver
// before the next step.
class CInterruption {
public:
    explicit CInterruption(const std::function<void()>& interrupted);
    ~CInterruption();
    // Calls back for a signal that came while the thread served no events.
    void Deliver();
    CInterruption(const CInterruption&) = delete;
    CInterruption& operator=(const CInterruption&) = delete;

private:
    std::function<void()> interrupted_;
    CFileDescriptor signals_;
    QSocketNotifier notifier_;
    struct sigaction terminate_ {};
    struct sigaction interrupt_ {};
};
