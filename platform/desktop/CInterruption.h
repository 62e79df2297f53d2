// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What ends a run before its time: signals, and the desktop at log-out.
#pragma once

#include "platform/files/CFileDescriptor.h"

#include <QObject>
#include <QSocketNotifier>
#include <functional>

#include <signal.h>

// A scope: while it lives, SIGTERM and SIGINT do not end the process. They call back instead, while the
// thread serves events. Signals that were ignored before stay ignored, and started programs have them as
// usual. When the system gives no descriptor, the signals end the process as ever. At most one lives at a
// time. GUI thread only. A signal that has not been served when the scope ends is lost, so call Deliver
// before the next step. It also calls back when the application is told to quit, as a session manager does:
// by itself Qt would only end event loops, and the desktop would wait for the process.
class CInterruption : public QObject {
public:
    explicit CInterruption(const std::function<void()>& interrupted);
    ~CInterruption() override;
    // Calls back for a signal that came while the thread served no events.
    void Deliver();

protected:
    // Sees the events of all objects on the thread.
    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    std::function<void()> interrupted_;
    CFileDescriptor signals_;
    QSocketNotifier notifier_;
    struct sigaction terminate_ {};
    struct sigaction interrupt_ {};
};
