// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/CTransferThreads.h"

#include "net/QHttp.h"

void CTransferThreads::Add(const Task& task, CWakingFlag& ended, bool isFirst) {
    bool isShort = false;
    {
        const std::lock_guard lock(mutex_);
        waiting_.insert(isFirst ? waiting_.begin() : waiting_.end(), Waiting{task, &ended});
        isShort = idle_ < waiting_.size();
    }
    changed_.notify_one();
    if (isShort && threads_.size() < limit_) {
        auto thread = std::make_unique<QThreadWithLoop>([this] { return Serve(); });
        thread->start(QThread::InheritPriority);
        if (thread->isRunning())
            threads_.push_back(std::move(thread));
    }
    if (threads_.empty()) {
        waiting_.clear();
        ended.Set();
    }
}

void CTransferThreads::End() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_all();
    for (const auto& thread : threads_)
        thread->wait();
    threads_.clear();
    idle_ = 0;
    isEnding_ = false;
}

int CTransferThreads::Serve() {
    QHttp http(memory_);
    for (Waiting next = Next(nullptr); next.task; next = Next(next.ended))
        next.task(http);
    return RESULT_OK;
}

CTransferThreads::Waiting CTransferThreads::Next(CWakingFlag* ended) {
    std::unique_lock lock(mutex_);
    ++idle_;
    // The owner may add the next task at once, and must find this thread idle.
    if (ended)
        ended->Set();
    changed_.wait(lock, [this] { return isEnding_ || !waiting_.empty(); });
    if (waiting_.empty())
        return {};
    --idle_;
    Waiting next = waiting_.front();
    waiting_.pop_front();
    return next;
}
