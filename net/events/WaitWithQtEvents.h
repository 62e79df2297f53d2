// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Waiting for something while the waiting thread goes on serving its events.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <atomic>
#include <boost/function.hpp>

// Lives on the stack of the waiting thread. While it waits, queued slots, timers and modal dialogs of that
// thread run inside the wait. It looks at the condition before the first event, after every event, and at
// least every POLL_INTERVAL; in between the thread sleeps. A CWakingFlag ends the sleep at once.
class WaitWithQtEvents : public QObject {
    Q_OBJECT

public:
    // In milliseconds.
    static constexpr int POLL_INTERVAL = 500;

    // Waits until flag equals value. The plain form is for a flag of this thread, the atomic one for a flag
    // that another thread stores. The flag must outlive this object.
    WaitWithQtEvents(const bool& flag, bool value);
    WaitWithQtEvents(const std::atomic<bool>& flag, bool value);
    // Waits as long as keepWaiting returns true; an empty function ends the wait at once.
    explicit WaitWithQtEvents(const boost::function<bool()>& keepWaiting);
    // Waits until more than that many milliseconds have passed since the construction.
    explicit WaitWithQtEvents(int milliseconds);

    void Wait();

protected:
    // Makes the sleeping dispatcher return.
    void timerEvent(QTimerEvent* event) override;

private:
    boost::function<bool()> keepWaiting_;
    QElapsedTimer elapsed_;
};
