// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A flag that wakes the thread which waits for it.
#pragma once

#include <atomic>
#include <boost/function.hpp>
#include <mutex>

class QAbstractEventDispatcher;

// One thread clears the flag, asks for something and waits; another sets the flag. What the setter wrote
// before Set is seen by the waiter after Wait, which may then destroy the flag.
class WakingFlag {
public:
    explicit WakingFlag(bool isSet = false) : set_(isSet) {}

    // On the thread that will wait, before it asks for what Set will report.
    void Clear() { set_.store(false, std::memory_order_relaxed); }
    // On any thread.
    void Set();
    // On any thread; the one that would wait sees what Wait would show it.
    bool IsSet() const { return set_.load(std::memory_order_acquire); }
    // Returns once the flag is set, or keepWaiting answers false; serves the calling thread's events
    // meanwhile.
    void WaitWhile(const boost::function<bool()>& keepWaiting);
    void Wait() {
        WaitWhile([] { return true; });
    }
    // The same, but serves no event.
    void Block();

private:
    std::atomic<bool> set_;
    // Set must be done with the flag, and with the waiter's dispatcher, before the waiter may go on.
    std::mutex mutex_;
    QAbstractEventDispatcher* waiter_ = nullptr;
};
