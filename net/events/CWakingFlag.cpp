// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/events/CWakingFlag.h"

#include <QAbstractEventDispatcher>

#include "net/events/WaitWithQtEvents.h"

void CWakingFlag::Set() {
    const std::lock_guard lock(mutex_);
    set_.store(true, std::memory_order_release);
    set_.notify_all();
    if (waiter_)
        waiter_->wakeUp();
}

void CWakingFlag::WaitWhile(const boost::function<bool()>& keepWaiting) {
    {
        const std::lock_guard lock(mutex_);
        waiter_ = QAbstractEventDispatcher::instance();
    }
    WaitWithQtEvents([&] { return !IsSet() && keepWaiting(); }).Wait();
    const std::lock_guard lock(mutex_);
    waiter_ = nullptr;
}

void CWakingFlag::Block() {
    set_.wait(false);
    const std::lock_guard lock(mutex_);
}
