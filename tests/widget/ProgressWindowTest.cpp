// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The small window that shows progress, as the user meets it.
#include "ui/CProgressWindow.h"

#include <gtest/gtest.h>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTest>
#include <functional>

#include "support/TextPrinting.h"

namespace {

using Task = IProgress::Task;

class ProgressWindow : public testing::Test {
protected:
    // Waits for the window; returns how long that took, in milliseconds.
    qint64 TimeUntilVisible() {
        QElapsedTimer timer;
        timer.start();
        EXPECT_TRUE(QTest::qWaitFor([this] { return window_.isVisible(); }));
        return timer.elapsed();
    }
    // The text of the bytes, without the isolates that keep numbers and units together.
    QString Bytes() const {
        return window_.findChild<QLabel*>("bytesLabel")->text().remove(QChar(0x2068)).remove(QChar(0x2069));
    }

    const QProgressBar& Bar() const { return *window_.findChild<QProgressBar*>("progressBar"); }

    int cancels_ = 0;
    CProgressWindow window_{[this] {
        EXPECT_FALSE(window_.isVisible());
        ++cancels_;
    }};
};

TEST_F(ProgressWindow, AppearsWhenAllWaitingTogetherTakesLong) {
    window_.Begin(Task::LOOKING_FOR_PROGRAM);
    QTest::qWait(300);
    window_.Pause();
    // The user may think this long about a question, which does not count as waiting.
    QTest::qWait(600);
    EXPECT_FALSE(window_.isVisible());
    window_.Begin(Task::LOOKING_FOR_LIST);
    const qint64 waited = TimeUntilVisible();
    EXPECT_GE(waited, 250);
    EXPECT_LE(waited, 600);
    EXPECT_EQ(Bar().maximum(), 0) << "busy";
    EXPECT_EQ(Bar().accessibleName(), QString("Looking for a new list of products..."));
    window_.Pause();
    EXPECT_FALSE(window_.isVisible());
    EXPECT_FALSE(window_.isModal()) << "it must not block a proxy's question";
}

TEST_F(ProgressWindow, ShowsAtOnceHowMuchOfAnInstallerHasArrived) {
    window_.Begin(Task::FETCHING_INSTALLER);
    EXPECT_TRUE(window_.isVisible());
    EXPECT_EQ(Bar().maximum(), 0);
    window_.SetBytes(1'500'000, 6'000'000);
    EXPECT_EQ(Bar().value() * 100.0 / Bar().maximum(), 25.0);
    EXPECT_EQ(Bytes(), QString("1.5 MB of 6.0 MB"));
    window_.SetBytes(2'000, 0);
    EXPECT_EQ(Bar().maximum(), 0) << "without an end in sight";
    EXPECT_EQ(Bytes(), QString("2.0 kB"));
}

TEST_F(ProgressWindow, EveryWayToCloseItCancelsAndEnterIsNone) {
    const std::function<void()> ways[] = {
        [&] { QTest::keyClick(&window_, Qt::Key_Escape); }, [&] { window_.close(); },
        [&] { QTest::keyClick(window_.focusWidget(), Qt::Key_Space); },
        [&] { QTest::mouseClick(window_.findChild<QPushButton*>(), Qt::LeftButton); }};
    for (const auto& close : ways) {
        window_.Begin(Task::FETCHING_INSTALLER);
        const int before = cancels_;
        QTest::keyClick(&window_, Qt::Key_Return);
        EXPECT_EQ(cancels_, before);
        close();
        EXPECT_EQ(cancels_, before + 1);
        EXPECT_FALSE(window_.isVisible());
        window_.Pause();
    }
    window_.Begin(Task::LOOKING_FOR_LIST);
    EXPECT_GE(TimeUntilVisible(), 600) << "a second click would cancel the next step, too";
}

}  // namespace
