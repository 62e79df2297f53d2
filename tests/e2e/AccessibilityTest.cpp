// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The window of the installed program, read and operated by a screen reader.
#include <QRegularExpression>

#include "e2e/ProgramTest.h"
#include "e2e/ScreenReader.h"
#include "support/LoopbackServer.h"
#include "support/ScopedEnvironment.h"
#include "support/TextPrinting.h"

using testing::IsSupersetOf;

class AccessibilityTest : public ProgramTest {
protected:
    static QStringList UnnamedControls(const QStringList& lines) {
        return lines.filter(
            QRegularExpression("^(push button|check box|spin box|text|password text|"
                               "progress bar|table): *$"));
    }

    ScreenReader reader_;
    ScopedEnvironment session_{"DBUS_SESSION_BUS_ADDRESS", reader_.Address().toUtf8()};
    ScopedEnvironment on_{"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"};
};

TEST_F(AccessibilityTest, EveryControlIsNamedAndRowButtonsSayForWhat) {
    Open();
    ASSERT_TRUE(WaitUntilChecked(PRODUCTS)) << program_->Output();
    const QStringList lines = reader_.Read();
    EXPECT_EQ(UnnamedControls(lines), QStringList());
    EXPECT_THAT(lines, IsSupersetOf<QString>({
                           "table: Products",
                           "column header: Latest version",
                           "cell: VARDO Lesson Planner",
                           "push button: Update VARDO Lesson Planner 2.3.0.0",
                           "push button: Current VARDO Timeline 1.2.3.4",
                           "check box: Check for updates automatically every:",
                           "spin box: Days between checks",
                           "label: 127.0.0.1: The server does not have the file (404)",
                           "push button: Connection Options",
                           "push button: Close",
                       }));
    EXPECT_TRUE(reader_.Press("Update VARDO Lesson Planner 2.3.0.0"));
    EXPECT_TRUE(WaitUntil([] { return SampleMachine::OpenedPages() == "pages/planner-2.html\n"; }));

    EXPECT_TRUE(reader_.Press("Connection Options"));
    desktop_.WaitFor(program_->Id(), "Proxy Authentication");
    QStringList dialog;
    EXPECT_TRUE(WaitUntil([&] {
        dialog = reader_.Read();
        return dialog.contains("text: Password:");
    }));
    EXPECT_EQ(UnnamedControls(dialog), QStringList());
    EXPECT_THAT(dialog, IsSupersetOf<QString>({"text: Proxy Host:", "text: Proxy Port", "text: User Name:"}));
}

TEST_F(AccessibilityTest, BusyBarSaysWhatIsChecked) {
    machine_.KnowBoardSoftwareOnly();
    LoopbackServer proxy;
    ProxySettings().setValue("HttpProxyHost", "127.0.0.1");
    ProxySettings().setValue("HttpProxyPort", proxy.Port());
    proxy.Serve(LoopbackServer::ANY, {LoopbackAnswer::Status(404), LoopbackAnswer::Silence()});
    Open();
    EXPECT_TRUE(WaitUntil([&] { return reader_.Read().contains("progress bar: Checking B"); }));
    EXPECT_TRUE(reader_.Press("Close")) << "the check ends at once, and the lock is free";
    EXPECT_TRUE(program_->WaitForEnd(std::chrono::seconds(1)) && program_->EndsWell());
    EXPECT_EQ(Setting("LastChecked"), 0);
    proxy.Serve(LoopbackServer::ANY, LoopbackAnswer::Status(404));
    Open();
}
