// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/QThreadWithLoop.h"

#include <QTimer>

#include "net/Qtfier.h"
#include "net/WaitWithQtEvents.h"

QThreadWithLoop::QThreadWithLoop(const boost::function<int()>& work) : work_(work) {
    setStackSize(STACK_BYTES);
    // Does nothing but arrive: an event of the owner's thread, which ends its sleep.
    connect(
        this, &QThread::finished, this, [] {}, Qt::QueuedConnection);
}

void QThreadWithLoop::WaitWithEvents() {
    WaitWithQtEvents([this] { return isRunning(); }).Wait();
}

void QThreadWithLoop::run() {
    QTimer start;
    start.setSingleShot(true);
    start.setInterval(0);
    Qtfier work([this] { RunWork(); });
    connect(&start, &QTimer::timeout, &work, &Qtfier::Slot);
    start.start();
    result_ = exec();
}

void QThreadWithLoop::RunWork() {
    exit(work_ ? work_() : NO_WORK);
}
