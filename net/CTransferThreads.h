// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The threads that transfers run on.
#pragma once

#include "net/CPeerMemory.h"
#include "net/events/QThreadWithLoop.h"
#include "net/events/WakingFlag.h"

#include <boost/function.hpp>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <vector>

class QHttp;

// Up to so many threads that carry out one task after another. Each has an HTTP client of its own, whose
// connection it keeps for its next task. One thread owns this object and calls its functions.
class CTransferThreads {
public:
    // Called on one of the threads. It may wait for events there with WaitWithQtEvents.
    using Task = boost::function<void(QHttp&)>;

    explicit CTransferThreads(std::size_t limit) : limit_(limit) {}
    // The tasks must have been carried out.
    ~CTransferThreads() { End(); }

    // Has a task carried out, after all others or before those that wait, and sets ended when it is over: at
    // once when no thread can be started for it.
    void Add(const Task& task, WakingFlag& ended, bool isFirst);
    // Ends the threads and their connections, until the next task.
    void End();
    // Shared by the tasks; any thread.
    CPeerMemory& Memory() { return memory_; }

private:
    struct Waiting {
        Task task;
        WakingFlag* ended;
    };

    // What each thread does until the end: RESULT_OK.
    int Serve();
    // Waits for a task; an empty one at the end.
    Waiting Next();

    const std::size_t limit_;
    CPeerMemory memory_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Waiting> waiting_;
    // Threads without a task.
    std::size_t idle_ = 0;
    bool isEnding_ = false;
    std::vector<std::unique_ptr<QThreadWithLoop>> threads_;
};
