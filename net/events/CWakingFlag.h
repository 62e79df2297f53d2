// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What one thread tells another that waits for it.
#pragma once

#include <atomic>
#include <boost/function.hpp>
#include <mutex>

class QAbstractEventDispatcher;

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
