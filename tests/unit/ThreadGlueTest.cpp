// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Waits that serve events, and how a flag ends them.
#include <gtest/gtest.h>
#include <QElapsedTimer>
#include <atomic>
#include <ctime>
#include <thread>

#include "net/events/CWakingFlag.h"
#include "net/events/WaitWithQtEvents.h"

using namespace std::chrono_literals;

namespace {

// In milliseconds: well below the poll's interval, and well above what a busy machine needs.
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
