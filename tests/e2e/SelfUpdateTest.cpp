// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The site offers a newer version of the installed program itself.
#include <gmock/gmock.h>

#include "e2e/Desktop.h"
#include "e2e/SampleMachine.h"

using testing::HasSubstr;
using testing::Not;

class SelfUpdateTest : public testing::TestWithParam<std::vector<std::string>> {
protected:
    static constexpr const char* TITLE = "VARDO Product Update";
    static std::string InstallerLog() { return ReadWholeFile("/tmp/home/installer.log"); }

    // The question has the title of the window; it comes before any product is checked.
    Window WaitForQuestion() {
        const Window question = desktop_.WaitFor(program_->Id(), TITLE);
        EXPECT_THAT(program_->Output(), Not(HasSubstr("- Checking")));
        return question;
    }

    SampleMachine machine_{"/tmp/vardo", true};
    Desktop desktop_;
    std::unique_ptr<ChildProcess> program_ = machine_.Start(desktop_.Name(), GetParam());
};

TEST_P(SelfUpdateTest, OkRunsTheInstallerAndEndsTheProgramWithoutATrace) {
    desktop_.Press(WaitForQuestion(), "Return");
    EXPECT_TRUE(program_->WaitForEnd());
    EXPECT_EQ(program_->ExitCode(), 0);
    EXPECT_TRUE(WaitUntil([] { return !InstallerLog().empty(); }));
    EXPECT_EQ(InstallerLog(), "The installer ran with 1 argument(s): --from 3.1.555.0\n");
    EXPECT_FALSE(SampleMachine::Setting("LastChecked").isValid());
    EXPECT_THAT(machine_.Requests(), Not(HasSubstr("/products.xml")));
}

TEST_P(SelfUpdateTest, AnyOtherAnswerContinuesWithTheCheck) {
    const Window question = WaitForQuestion();
    desktop_.Press(question, "Escape");
    EXPECT_TRUE(desktop_.WaitUntilGone(question));
    EXPECT_TRUE(
        WaitUntil([this] { return machine_.Requests().find("/updates/timeline.xml") != std::string::npos; }));
    const Window window = desktop_.WaitFor(program_->Id(), TITLE);
    desktop_.Press(window, "Escape");
    EXPECT_TRUE(program_->WaitForEnd());
    EXPECT_EQ(InstallerLog(), "");
    EXPECT_TRUE(SampleMachine::Setting("LastChecked").isValid());
}

INSTANTIATE_TEST_SUITE_P(, SelfUpdateTest,
                         testing::Values(std::vector<std::string>{}, std::vector<std::string>{"-silent"}),
                         [](const auto& row) { return row.param.empty() ? "interactive" : "silent"; });
