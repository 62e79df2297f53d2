// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The installed program checks the sample site, and a user works in its window.
#include <set>

#include "e2e/ProgramTest.h"

class InteractiveCheckTest : public ProgramTest {
protected:
    void SetUp() override {
        Open();
        ASSERT_TRUE(WaitUntilChecked(PRODUCTS)) << program_->Output();
        // The window has grown for the longest name.
        window_ = desktop_.WaitFor(program_->Id(), TITLE);
    }
    // Clicks all the way down the column of buttons, so that no button is missed.
    void ClickEveryVisibleButton() {
        for (int y = 45; y < window_.height - 100; y += 12)
            desktop_.Click(window_, -60, y);
    }
    // The pages that the browser should have opened, without the site's address.
    static std::set<std::string> OpenedPages() {
        std::ifstream notes("/tmp/run/pages");
        return {std::istream_iterator<std::string>(notes), {}};
    }
    // Turns the mouse wheel far enough to reach the top.
    void ScrollUp() {
        desktop_.Do({"mousemove", "--window", window_.id, "200", "200", "click", "--repeat", "20", "4"});
    }
};

TEST_F(InteractiveCheckTest, ButtonsOpenThePagesOfTheUpdates) {
    EXPECT_THAT(ReadWholeFile(SampleMachine::FOLDER + "/share/products.xml"),
                HasSubstr("Version=\"1.3.0.0\""));
    EXPECT_THAT(machine_.Requests(), HasSubstr("GET /updates/ink.xml 404"));
    // The window has scrolled down to the highlighted notice at the end.
    ClickEveryVisibleButton();
    EXPECT_TRUE(WaitUntil([] { return OpenedPages().contains("pages/courses.html"); }));
    ScrollUp();
    ClickEveryVisibleButton();
    const std::set<std::string> updates{"pages/notebook.html",        "pages/planner-2.html",
                                        "pages/camera.html",          "pages/handwriting.html",
                                        "pages/microscope-home.html", "pages/courses.html"};
    EXPECT_TRUE(WaitUntil([&] { return OpenedPages().size() >= updates.size(); }));
    EXPECT_EQ(OpenedPages(), updates);

    EXPECT_TRUE(Close());
    EXPECT_THAT(ReadWholeFile("/tmp/home/content-tool.log"),
                HasSubstr("The content tool ran with: -guid 5E0D7A52-3C1B-4F0E-9A57-1C2B60D94F11"));
    EXPECT_EQ(Setting("LastChecked"), Today());
    EXPECT_EQ(Setting("Notifications/SummerCourses"), 1);
    EXPECT_EQ(Setting("Interval"), 30);
    EXPECT_EQ(Setting("CheckUpdates"), 1);
}
