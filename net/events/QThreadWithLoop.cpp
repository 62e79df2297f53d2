// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/events/QThreadWithLoop.h"

#include <QTimer>

#include "net/events/Qtfier.h"
#include "net/events/WaitWithQtEvents.h"

QThreadWithLoop::QThreadWithLoop(const boost::function<int()>& work) : work_(work) {
    // The event does nothing but arrive on the owner's thread, which ends its sleep.
    connect(
        this, &QThread::finished, this, [] {}, Qt::QueuedConnection);
}

void QThreadWithLoop::WaitWithEvents() {
    WaitWithQtEvents([this] { return isRunning(); }).Wait();
}

void QThreadWithLoop::run() {
    Qtfier work([this] { RunWork(); });
    QTimer::singleShot(0, &work, &Qtfier::Slot);
    result_ = exec();
}

void QThreadWithLoop::RunWork() {
    exit(work_ ? work_() : NO_WORK);
}
