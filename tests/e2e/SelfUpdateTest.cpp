// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The site offers a newer version of the installed program itself, signed with the key that lies beside it.
#include <filesystem>
#include <iterator>

#include "e2e/ProgramTest.h"
#include "platform/files/CVardoDirectoryPath.h"

using testing::Not;

class SelfUpdateTest : public ProgramTest, public testing::WithParamInterface<std::string> {
protected:
    // The question has the title of the window; it comes before any product is checked.
    SelfUpdateTest() : ProgramTest(true) {
        // An earlier installer stays.
        for (const auto& entry : Downloads())
            std::filesystem::remove_all(entry);
        Open(GetParam() == "silent" ? std::vector<std::string>{"-silent"} : std::vector<std::string>());
        EXPECT_THAT(program_->Output(), Not(HasSubstr("- Checking")));
    }

    void ExpectTheInstallerToRun() {
        desktop_.Press(window_, "Return");
        EXPECT_TRUE(program_->EndsWell());
        EXPECT_TRUE(WaitUntil([] { return !InstallerLog().empty(); }));
        EXPECT_EQ(InstallerLog(), "The installer ran with 1 argument(s): --from 3.1.555.0\n");
        EXPECT_EQ(Setting("LastChecked"), -1);
        EXPECT_THAT(machine_.Requests(), Not(HasSubstr("/products.xml")));
    }
    // The window that the user works in has gone; the check goes on in the main window.
    void ExpectTheCheckInstead() {
        EXPECT_TRUE(desktop_.WaitUntilGone(window_));
        EXPECT_TRUE(WaitUntilChecked(PRODUCTS));
        window_ = desktop_.WaitFor(program_->Id(), TITLE);
        EXPECT_TRUE(Close());
        EXPECT_EQ(InstallerLog(), "");
        EXPECT_EQ(Setting("LastChecked"), Today());
        EXPECT_EQ(DownloadsLeft(), 0);
    }

    static std::string InstallerLog() { return ReadWholeFile("/tmp/home/installer.log"); }
    static long DownloadsLeft() { return std::distance(begin(Downloads()), end(Downloads())); }
    static std::filesystem::directory_iterator Downloads() {
        const CVardoDirectoryPath folder = CVardoDirectoryPath::GetTempDirectory();
        return std::filesystem::directory_iterator(folder.GetDirectoryPathString().ToQString().toStdString());
    }
    static const inline std::string INSTALLER = "/tmp/run/site/program/installer.sh";
    static const inline std::string KEY = SampleMachine::FOLDER + "/share/VardoProductUpdate.pub";
};

TEST_P(SelfUpdateTest, OkRunsTheInstallerAndEndsTheProgramWithoutATrace) {
    ExpectTheInstallerToRun();
    EXPECT_THAT(machine_.Requests(), HasSubstr("/program/installer.sh.minisig 200"));
}

TEST_P(SelfUpdateTest, WithoutAKeyNobodyAsksForASignature) {
    std::filesystem::remove(KEY);
    ExpectTheInstallerToRun();
    EXPECT_THAT(machine_.Requests(), Not(HasSubstr("minisig")));
}

TEST_P(SelfUpdateTest, AnyOtherAnswerContinuesWithTheCheck) {
    desktop_.Press(window_, "Escape");
    ExpectTheCheckInstead();
}

TEST_P(SelfUpdateTest, UnsignedOrAlteredInstallerIsRefusedWithAWarning) {
    if (GetParam() == "silent")
        std::filesystem::remove(INSTALLER + ".minisig");
    else
        std::ofstream(INSTALLER, std::ios::app) << "rm -r ~\n";
    const Window question = window_;
    desktop_.Press(question, "Return");
    EXPECT_TRUE(desktop_.WaitUntilGone(question));
    window_ = desktop_.WaitFor(program_->Id(), TITLE);
    desktop_.Press(window_, "Return");
    ExpectTheCheckInstead();
}

TEST_P(SelfUpdateTest, CancelledDownloadContinuesWithTheCheckWithoutAWord) {
    // At 2 kB a second it is not there before somebody cancels.
    std::ofstream(INSTALLER, std::ios::app) << std::string(1'000'000, '#');
    desktop_.Press(window_, "Return");
    window_ = desktop_.WaitFor(program_->Id(), std::string(TITLE) + ": Please Wait");
    EXPECT_TRUE(WaitUntil([] { return DownloadsLeft() == 1; }));
    desktop_.Press(window_, "Escape");
    ExpectTheCheckInstead();
}

INSTANTIATE_TEST_SUITE_P(, SelfUpdateTest, testing::Values("interactive", "silent"),
                         [](const auto& row) { return row.param; });
