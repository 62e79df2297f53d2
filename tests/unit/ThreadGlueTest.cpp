// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Waiting with events, waking, and work on a thread of its own.
#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <atomic>
#include <ctime>
#include <thread>

#include "net/events/QThreadWithLoop.h"
#include "net/events/WaitWithQtEvents.h"
#include "platform/text/ResultCodes.h"

using namespace std::chrono_literals;

namespace {

// Well below the poll, well above what a machine under load needs.
constexpr qint64 AT_ONCE = 300;

template <typename Action>
qint64 MillisecondsOf(Action action) {
    QElapsedTimer timer;
    timer.start();
    action();
    return timer.elapsed();
}

}  // namespace

TEST(Wait, SeesAnotherThreadsUnannouncedFlagWithTheNextPoll) {
    std::atomic<bool> flag = false;
    std::thread setter([&] {
        std::this_thread::sleep_for(200ms);
        flag.store(true, std::memory_order_release);
    });
    const std::clock_t spent = std::clock();
    const qint64 waited = MillisecondsOf([&] { WaitWithQtEvents(flag, true).Wait(); });
    EXPECT_LT(std::clock() - spent, CLOCKS_PER_SEC / 50) << "the wait was busy";
    EXPECT_GE(waited, 200);
    EXPECT_LT(waited, WaitWithQtEvents::POLL_INTERVAL + AT_ONCE);
    setter.join();
}

TEST(AWakingFlag, EndsTheWaitAtOnceAndShowsWhatWasWrittenBefore) {
    CWakingFlag flag;
    int value = 0;
    for (int round = 1; round <= 10; ++round) {
        flag.Clear();
        std::thread setter([&] {
            if (round % 2)
                std::this_thread::sleep_for(1ms);
            value = round;
            flag.Set();
        });
        EXPECT_LT(MillisecondsOf([&] { flag.Wait(); }), AT_ONCE);
        EXPECT_EQ(value, round);
        setter.join();
    }
    flag.Set();
}

TEST(AThreadWithLoop, ServesEventsOnBothThreadsAndAnswersWhatItsWorkReturns) {
    bool onOwner = false;
    QTimer::singleShot(0, [&] { onOwner = true; });
    QThreadWithLoop thread([] {
        int ticks = 0;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
        timer.start(5ms);
        WaitWithQtEvents([&] { return ticks < 3; }).Wait();
        return static_cast<int>(0x80004000U) + ticks;
    });
    thread.start(QThread::InheritPriority);
    EXPECT_LT(MillisecondsOf([&] { thread.WaitWithEvents(); }), AT_ONCE);
    EXPECT_EQ(thread.GetResult(), static_cast<int>(0x80004003U));
    EXPECT_TRUE(onOwner);
}

TEST(AThreadWithLoop, AnswersWhetherItHadWorkAndCouldStart) {
    QThreadWithLoop idle({});
    idle.start(QThread::InheritPriority);
    idle.WaitWithEvents();
    EXPECT_EQ(idle.GetResult(), 1);
    QThreadWithLoop tooSmall([] { return RESULT_OK; });
    // Less than pthread_attr_setstacksize(3) takes.
    tooSmall.setStackSize(1);
    tooSmall.start(QThread::InheritPriority);
    tooSmall.WaitWithEvents();
    EXPECT_EQ(tooSmall.GetResult(), RESULT_FAILED);
}
