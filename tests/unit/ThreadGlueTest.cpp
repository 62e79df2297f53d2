// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Waiting with events, waking, and work on a thread of its own.
#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QTimer>
#include <atomic>
#include <ctime>
#include <stdexcept>
#include <thread>

#include "net/QThreadWithLoop.h"
#include "net/QtEventProxy.h"
#include "net/Qtfier.h"
#include "net/WaitWithQtEvents.h"
#include "net/WakingFlag.h"

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

// What the calling thread spends.
double ProcessorMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

int RunOnThread(const boost::function<int()>& work) {
    QThreadWithLoop thread(work);
    thread.start(QThread::InheritPriority);
    thread.WaitWithEvents();
    return thread.GetResult();
}

}  // namespace

TEST(Wait, ProcessesNoEventWhenThereIsNothingToWaitFor) {
    bool processed = false;
    const bool done = true;
    const std::atomic<bool> atomicallyDone = true;
    QMetaObject::invokeMethod(
        qApp, [&] { processed = true; }, Qt::QueuedConnection);
    WaitWithQtEvents(done, true).Wait();
    WaitWithQtEvents(atomicallyDone, true).Wait();
    WaitWithQtEvents([] { return false; }).Wait();
    WaitWithQtEvents(boost::function<bool()>()).Wait();
    EXPECT_FALSE(processed);
    QCoreApplication::sendPostedEvents();
    EXPECT_TRUE(processed);
}

TEST(Wait, EndsWithTheEventThatEndsIt) {
    bool flag = true;
    QTimer::singleShot(10, [&] { flag = false; });
    EXPECT_LT(MillisecondsOf([&] { WaitWithQtEvents(flag, false).Wait(); }), AT_ONCE);
    QTimer::singleShot(10, [&] { flag = true; });
    EXPECT_LT(MillisecondsOf([&] { WaitWithQtEvents(flag, true).Wait(); }), AT_ONCE);
}

TEST(Wait, SeesAnotherThreadsUnannouncedFlagWithTheNextPoll) {
    std::atomic<bool> flag = false;
    std::thread setter([&] {
        std::this_thread::sleep_for(20ms);
        flag.store(true, std::memory_order_release);
    });
    const double spent = ProcessorMilliseconds();
    const qint64 waited = MillisecondsOf([&] { WaitWithQtEvents(flag, true).Wait(); });
    EXPECT_LT(ProcessorMilliseconds() - spent, 50) << "the wait was busy";
    EXPECT_GE(waited, 20);
    EXPECT_LT(waited, WaitWithQtEvents::POLL_INTERVAL + AT_ONCE);
    setter.join();
}

TEST(Wait, ByTimeEndsWithTheFirstPollAfterwards) {
    const qint64 waited = MillisecondsOf([] { WaitWithQtEvents(100).Wait(); });
    EXPECT_GT(waited, 100);
    EXPECT_LT(waited, WaitWithQtEvents::POLL_INTERVAL + AT_ONCE);
}

TEST(AWakingFlag, EndsTheWaitAtOnceAndShowsWhatWasWrittenBefore) {
    WakingFlag flag;
    int value = 0;
    qint64 longest = 0;
    for (int round = 1; round <= 20; ++round) {
        flag.Clear();
        std::thread setter([&] {
            if (round % 2)
                std::this_thread::sleep_for(1ms);
            value = round;
            flag.Set();
        });
        longest = std::max(longest, MillisecondsOf([&] { flag.Wait(); }));
        EXPECT_EQ(value, round);
        setter.join();
    }
    EXPECT_LT(longest, AT_ONCE);
    flag.Set();
}

TEST(AThreadWithLoop, AnswersWhatItsWorkReturns) {
    EXPECT_EQ(RunOnThread([] { return 42; }), 42);
    EXPECT_EQ(RunOnThread([] { return static_cast<int>(0x80004005U); }), static_cast<int>(0x80004005U));
    EXPECT_EQ(RunOnThread({}), 1);
}

TEST(AThreadWithLoop, EndsTheWaitWhenItEnds) {
    EXPECT_LT(MillisecondsOf([] {
                  RunOnThread([] {
                      QThread::msleep(20);
                      return 0;
                  });
              }),
              AT_ONCE);
}

TEST(AThreadWithLoop, ServesEventsOnBothThreads) {
    bool onOwner = false;
    QTimer::singleShot(0, [&] { onOwner = true; });
    const int result = RunOnThread([] {
        int ticks = 0;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
        timer.start(1ms);
        WaitWithQtEvents([&] { return ticks < 3; }).Wait();
        return ticks;
    });
    EXPECT_EQ(result, 3);
    EXPECT_TRUE(onOwner);
}

TEST(AQtfier, CallsItsActionForASignal) {
    int calls = 0;
    Qtfier counter([&] { ++calls; });
    QObject sender;
    QObject::connect(&sender, SIGNAL(destroyed()), &counter, SLOT(Slot()));
    counter.Slot();
    emit sender.destroyed();
    EXPECT_EQ(calls, 2);
    EXPECT_THROW(Qtfier({}).Slot(), boost::bad_function_call);
}

TEST(AnEventProxy, DispatchesByType) {
    QtEventProxy proxy;
    QObject watched;
    watched.installEventFilter(&proxy);
    QObject* seen = nullptr;
    proxy.SetHandler(QEvent::User, [](QObject*, QEvent*) { return false; });
    proxy.SetHandler(QEvent::User, [&](QObject* object, QEvent*) {
        seen = object;
        return true;
    });
    proxy.SetHandler(QEvent::User, {});

    QEvent handled(QEvent::User);
    QEvent other(QEvent::MaxUser);
    EXPECT_TRUE(QCoreApplication::sendEvent(&watched, &handled));
    EXPECT_EQ(seen, &watched);
    EXPECT_FALSE(proxy.eventFilter(&watched, &other));
}
