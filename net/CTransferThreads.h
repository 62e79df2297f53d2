// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The threads that transfers run on.
#pragma once

#include "net/CPeerMemory.h"
#include "net/events/CWakingFlag.h"
#include "net/events/QThreadWithLoop.h"

#include <boost/function.hpp>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <vector>

class QHttp;

// A pool of threads. Each has an HTTP client of its own, which keeps its connection for the thread's next
// task. One thread owns this object and calls its functions.
class CTransferThreads {
public:
    // Runs on one of the threads, where it may wait with WaitWithQtEvents.
    using Task = boost::function<void(QHttp&)>;

    // limit is the most threads.
    explicit CTransferThreads(std::size_t limit) : limit_(limit) {}
    // All tasks must have ended.
    ~CTransferThreads() { End(); }

    // Runs a task before (isFirst) or after those that wait, and sets ended when it is over. When the pool
    // has no thread and cannot start one, it drops the task and sets ended at once.
    void Add(const Task& task, CWakingFlag& ended, bool isFirst);
    // Ends the threads and their connections, until the next task.
    void End();
    // The tasks share it; any thread.
    CPeerMemory& Memory() { return memory_; }

private:
    struct Waiting {
        Task task;
        CWakingFlag* ended;
    };

    // The work of each thread. Returns RESULT_OK.
    int Serve();
    // Reports the end of the last task unless ended is null, and waits for the next; an empty one is the end.
    Waiting Next(CWakingFlag* ended);

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
