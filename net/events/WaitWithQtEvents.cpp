// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/events/WaitWithQtEvents.h"

#include <QAbstractEventDispatcher>
#include <QEventLoop>

WaitWithQtEvents::WaitWithQtEvents(const bool& flag, bool value)
    : keepWaiting_([&flag, value] { return flag != value; }) {}

WaitWithQtEvents::WaitWithQtEvents(const std::atomic<bool>& flag, bool value)
    : keepWaiting_([&flag, value] { return flag.load(std::memory_order_acquire) != value; }) {}

WaitWithQtEvents::WaitWithQtEvents(const boost::function<bool()>& keepWaiting) : keepWaiting_(keepWaiting) {}

WaitWithQtEvents::WaitWithQtEvents(int milliseconds)
    : keepWaiting_([this, milliseconds] { return elapsed_.elapsed() <= milliseconds; }) {
    elapsed_.start();
}

void WaitWithQtEvents::Wait() {
    if (!keepWaiting_)
        return;
    const int timer = startTimer(POLL_INTERVAL);
    QEventLoop loop;
    while (keepWaiting_())
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    killTimer(timer);
}

void WaitWithQtEvents::timerEvent(QTimerEvent* /*event*/) {
    if (QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance())
        dispatcher->interrupt();
}
