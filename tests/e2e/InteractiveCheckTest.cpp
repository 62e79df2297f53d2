// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The installed program checks the sample site, and a user works in its window.
#include <gmock/gmock.h>
#include <set>

#include "e2e/ProgramTest.h"
#include "support/LoopbackServer.h"

using testing::HasSubstr;

class InteractiveCheckTest : public ProgramTest {
protected:
    void ClickConnectionOptions() { desktop_.Click(window_, 60, -20); }
    void ClickRetry() { desktop_.Click(window_, 190, -20); }
    void ClickCheckBox() { desktop_.Click(window_, 18, -68); }
    // Clicks all the way down the column of buttons; what opens a page opens it more than once.
    void ClickEveryVisibleButton() {
        for (int y = 45; y < window_.height - 100; y += 12)
            desktop_.Click(window_, -60, y);
    }
    std::set<std::string> OpenedPages() const {
        const std::vector<std::string> pages = machine_.OpenedPages();
        return {pages.begin(), pages.end()};
    }
};

TEST_F(InteractiveCheckTest, ChecksEveryProductAndOpensThePagesOfTheUpdates) {
    Open();
    ASSERT_TRUE(WaitUntilChecked(PRODUCTS)) << program_->Output();
    EXPECT_THAT(ReadWholeFile(machine_.Folder() + "/share/products.xml"), HasSubstr("Version=\"1.3.0.0\""));
    EXPECT_THAT(machine_.Requests(), HasSubstr("GET /updates/ink.xml 404"));
    // The highlighted notice at the end was scrolled into view.
    ClickEveryVisibleButton();
    EXPECT_TRUE(WaitUntil([this] { return OpenedPages().contains("pages/courses.html"); }));
    desktop_.ScrollUp(window_);
    ClickEveryVisibleButton();
    const std::set<std::string> updates{"pages/notebook.html",        "pages/planner-2.html",
                                        "pages/camera.html",          "pages/handwriting.html",
                                        "pages/microscope-home.html", "pages/courses.html"};
    EXPECT_TRUE(WaitUntil([&] { return OpenedPages().size() >= updates.size(); }));
    EXPECT_EQ(OpenedPages(), updates);

    EXPECT_TRUE(Close());
    EXPECT_EQ(SampleMachine::Setting("LastChecked").toInt(), Today());
    EXPECT_EQ(SampleMachine::Setting("Notifications/SummerCourses").toInt(), 1);
    EXPECT_THAT(ReadWholeFile("/tmp/home/content-tool.log"),
                HasSubstr("The content tool ran with: -guid 5E0D7A52-3C1B-4F0E-9A57-1C2B60D94F11"));
    EXPECT_EQ(SampleMachine::Setting("Interval").toInt(), 30);
    EXPECT_EQ(SampleMachine::Setting("CheckUpdates").toInt(), 1);
}

TEST_F(InteractiveCheckTest, RetryChecksEverythingAgain) {
    Open();
    ASSERT_TRUE(WaitUntilChecked(PRODUCTS)) << program_->Output();
    ClickRetry();
    EXPECT_TRUE(WaitUntilChecked(2 * PRODUCTS)) << program_->Output();
    EXPECT_TRUE(Close());
}

TEST_F(InteractiveCheckTest, TheIntervalControlsAreSaved) {
    Open();
    ASSERT_TRUE(WaitUntilChecked(PRODUCTS)) << program_->Output();
    ClickCheckBox();
    desktop_.Press(window_, "Tab");
    desktop_.Press(window_, "ctrl+a");
    desktop_.Type(window_, "7");
    EXPECT_TRUE(Close());
    EXPECT_EQ(SampleMachine::Setting("CheckUpdates").toInt(), 0);
    EXPECT_EQ(SampleMachine::Setting("Interval").toInt(), 7);
}

TEST_F(InteractiveCheckTest, ConnectionOptionsAreSavedForAllOfTheMakersSoftware) {
    Open();
    ASSERT_TRUE(WaitUntilChecked(PRODUCTS)) << program_->Output();
    ClickConnectionOptions();
    const Window dialog = desktop_.WaitFor(program_->Id(), "Proxy Authentication");
    desktop_.Type(dialog, "proxy.example");
    desktop_.Press(dialog, "Tab");
    desktop_.Press(dialog, "ctrl+a");
    desktop_.Type(dialog, "3128");
    desktop_.Press(dialog, "Return");
    EXPECT_TRUE(desktop_.WaitUntilGone(dialog));
    EXPECT_TRUE(Close());
    EXPECT_EQ(SampleMachine::ProxySetting("HttpProxyHost").toString().toStdString(), "proxy.example");
    EXPECT_EQ(SampleMachine::ProxySetting("HttpProxyPort").toInt(), 3128);
}

TEST_F(InteractiveCheckTest, ClosingDuringACheckEndsTheProgramAtOnce) {
    machine_.KnowBoardSoftwareOnly();
    LoopbackServer proxy;
    proxy.Serve(machine_.Site() + "updates/board.xml", LoopbackAnswer::Silence());
    SampleMachine::SetProxy(proxy.Port());
    for (const char* copy : {"first", "second, which finds the lock free"}) {
        const std::size_t before = proxy.RequestCount();
        Open();
        // Its own description and the board's.
        ASSERT_TRUE(WaitUntil([&] { return proxy.RequestCount() == before + 2; })) << copy;
        desktop_.Click(window_, -40, -20);
        EXPECT_TRUE(program_->WaitForEnd(std::chrono::seconds(1))) << copy;
        EXPECT_EQ(program_->ExitCode(), 0) << copy;
    }
    EXPECT_EQ(SampleMachine::Setting("LastChecked").toInt(), 0);
}
