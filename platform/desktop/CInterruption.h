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
// time. GUI thread only.
class CInterruption {
public:
    explicit CInterruption(const std::function<void()>& interrupted);
    ~CInterruption();
    CInterruption(const CInterruption&) = delete;
    CInterruption& operator=(const CInterruption&) = delete;

private:
    CFileDescriptor signals_;
    QSocketNotifier notifier_;
    struct sigaction terminate_ {};
    struct sigaction interrupt_ {};
};
