// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/WakingFlag.h"

#include <QAbstractEventDispatcher>

#include "net/WaitWithQtEvents.h"

void WakingFlag::Clear() {
    const std::lock_guard lock(mutex_);
    waiter_ = QAbstractEventDispatcher::instance();
    set_.store(false, std::memory_order_relaxed);
}

void WakingFlag::Set() {
    const std::lock_guard lock(mutex_);
    set_.store(true, std::memory_order_release);
    if (waiter_)
        waiter_->wakeUp();
}

void WakingFlag::Wait() {
    WaitWithQtEvents(set_, true).Wait();
    const std::lock_guard lock(mutex_);
    waiter_ = nullptr;
}
