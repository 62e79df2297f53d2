// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The site offers a newer version of the installed program itself.
#include "e2e/ProgramTest.h"

using testing::Not;

class SelfUpdateTest : public ProgramTest, public testing::WithParamInterface<std::string> {
protected:
    // The question has the title of the window; it comes before any product is checked.
    SelfUpdateTest() : ProgramTest(true) {
        Open(GetParam() == "silent" ? std::vector<std::string>{"-silent"} : std::vector<std::string>());
        EXPECT_THAT(program_->Output(), Not(HasSubstr("- Checking")));
    }
    static std::string InstallerLog() { return ReadWholeFile("/tmp/home/installer.log"); }
};

TEST_P(SelfUpdateTest, OkRunsTheInstallerAndEndsTheProgramWithoutATrace) {
    desktop_.Press(window_, "Return");
    EXPECT_TRUE(program_->EndsWell());
    EXPECT_TRUE(WaitUntil([] { return !InstallerLog().empty(); }));
    EXPECT_EQ(InstallerLog(), "The installer ran with 1 argument(s): --from 3.1.555.0\n");
    EXPECT_EQ(Setting("LastChecked"), -1);
    EXPECT_THAT(machine_.Requests(), Not(HasSubstr("/products.xml")));
}

TEST_P(SelfUpdateTest, AnyOtherAnswerContinuesWithTheCheck) {
    desktop_.Press(window_, "Escape");
    EXPECT_TRUE(desktop_.WaitUntilGone(window_));
    EXPECT_TRUE(WaitUntilChecked(PRODUCTS));
    window_ = desktop_.WaitFor(program_->Id(), TITLE);
    EXPECT_TRUE(Close());
    EXPECT_EQ(InstallerLog(), "");
    EXPECT_EQ(Setting("LastChecked"), Today());
}

INSTANTIATE_TEST_SUITE_P(, SelfUpdateTest, testing::Values("interactive", "silent"),
                         [](const auto& row) { return row.param; });
