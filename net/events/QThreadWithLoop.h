// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// One function on a thread of its own, inside that thread's event loop.
#pragma once

#include "platform/text/ResultCodes.h"

#include <QThread>
#include <boost/function.hpp>

// One owner thread uses it: construct, start(), WaitWithEvents(), GetResult(), destroy. The work is the first
// event of the new thread's loop, so objects that it makes there get their events whenever it waits.
class QThreadWithLoop : public QThread {
public:
    // What GetResult answers when there is no work.
    static constexpr int NO_WORK = 1;

    // The thread ends with its work; an empty one ends at once.
    explicit QThreadWithLoop(const boost::function<int()>& work);

    // Serves the calling thread's events until this thread has ended, which wakes it.
    void WaitWithEvents();
    // What the work returned; valid after WaitWithEvents. RESULT_FAILED when the thread could not be started.
    int GetResult() const { return result_; }

protected:
    void run() override;

private:
    void RunWork();

    boost::function<int()> work_;
    int result_ = RESULT_FAILED;
};
