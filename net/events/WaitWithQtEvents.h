// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Waiting for something while the waiting thread goes on serving its events.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <atomic>
#include <boost/function.hpp>
#include <mutex>

class QAbstractEventDispatcher;

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

// A flag that wakes the thread which waits for it. One thread clears it, asks for something and waits;
// another sets it. After Wait the waiter sees what the setter wrote before Set, and may destroy the flag.
class CWakingFlag {
public:
    explicit CWakingFlag(bool isSet = false) : set_(isSet) {}

    // Call it on the thread that will wait, before that thread asks for what Set will report.
    void Clear() { set_.store(false, std::memory_order_relaxed); }
    // On any thread.
    void Set();
    // On any thread. When set, that thread sees what the setter wrote before Set.
    bool IsSet() const { return set_.load(std::memory_order_acquire); }
    // Serves the calling thread's events until the flag is set, or keepWaiting answers false.
    void WaitWhile(const boost::function<bool()>& keepWaiting);
    void Wait() {
        WaitWhile([] { return true; });
    }
    // The same, but serves no event.
    void Block();

private:
    std::atomic<bool> set_;
    // The waiter may go on only after Set is done with the flag and with the waiter's dispatcher.
    std::mutex mutex_;
    QAbstractEventDispatcher* waiter_ = nullptr;
};
