// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A flag that wakes the thread which waits for it.
#pragma once

#include <atomic>
#include <mutex>

class QAbstractEventDispatcher;

// One thread clears the flag, asks for something and waits; another sets the flag. What the setter wrote
// before Set is seen by the waiter after Wait. Must outlive both.
class WakingFlag {
public:
    // On the thread that will wait, before it asks for what Set will report.
    void Clear();
    // On any thread. Wakes the thread that cleared the flag and has not ended its wait.
    void Set();
    // On the thread that cleared the flag: returns once it is set; serves the thread's events meanwhile.
    void Wait();

private:
    std::atomic<bool> set_ = false;
    // Set must be done with the waiter's dispatcher before the waiter's thread may end.
    std::mutex mutex_;
    QAbstractEventDispatcher* waiter_ = nullptr;
};
