// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The installed program as a scheduler starts it: it is seen only when it has something to say.
#include <gmock/gmock.h>

#include "e2e/ProgramTest.h"

using testing::HasSubstr;

class SilentCheckTest : public ProgramTest {
protected:
    // True when the program ends by itself, which it does not while it shows a window.
    bool RunUnseen() {
        program_ = machine_.Start(desktop_.Name(), {"-silent"});
        return program_->WaitForEnd() && program_->ExitCode() == 0;
    }
};

TEST_F(SilentCheckTest, NotDueNothingIsFetchedShownOrWritten) {
    SampleMachine::SetSetting("LastChecked", Today());
    SampleMachine::SetSetting("Interval", 1);
    EXPECT_TRUE(RunUnseen());
    EXPECT_EQ(machine_.Requests(), "");

    SampleMachine::SetSetting("LastChecked", 0);
    SampleMachine::SetSetting("CheckUpdates", 0);
    EXPECT_TRUE(RunUnseen());
    EXPECT_EQ(machine_.Requests(), "");
    EXPECT_EQ(SampleMachine::Setting("LastChecked").toInt(), 0);
}

TEST_F(SilentCheckTest, DueWithNothingNewItStaysUnseenAndNotesTheDay) {
    machine_.KnowBoardSoftwareOnly();
    SampleMachine::SetSetting("LastChecked", Today() - 1);
    SampleMachine::SetSetting("Interval", 1);
    EXPECT_TRUE(RunUnseen());
    EXPECT_THAT(machine_.Requests(), HasSubstr("GET /updates/board.xml 200"));
    EXPECT_EQ(SampleMachine::Setting("LastChecked").toInt(), Today());
}

TEST_F(SilentCheckTest, WithoutASiteItStaysUnseenAndKeepsTheOldDay) {
    machine_.StopSite();
    SampleMachine::SetSetting("LastChecked", 2451545);
    EXPECT_TRUE(RunUnseen());
    EXPECT_EQ(SampleMachine::Setting("LastChecked").toInt(), 2451545);
    EXPECT_EQ(SampleMachine::Setting("Interval").toInt(), 30);
    EXPECT_EQ(SampleMachine::Setting("CheckUpdates").toInt(), 1);
}

TEST_F(SilentCheckTest, WithSomethingNewTheWindowOpensWhenTheCheckHasEnded) {
    Open({"-silent"});
    EXPECT_THAT(machine_.Requests(), HasSubstr("GET /updates/timeline.xml 200"));
    EXPECT_TRUE(Close());
    EXPECT_EQ(SampleMachine::Setting("LastChecked").toInt(), Today());
}
