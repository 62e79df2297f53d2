// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The site offers a newer version of the program, signed; the public key lies beside the installed one.
#include <filesystem>
#include <iterator>

#include "e2e/ProgramTest.h"
#include "platform/files/CVardoDirectoryPath.h"

using testing::Not;

// The question has the title of the main window, and comes before the check of the products.
class SelfUpdateTest : public ProgramTest {
protected:
    SelfUpdateTest() : ProgramTest(true) {}

    void ExpectTheInstallerToRun() {
        desktop_.Press(window_, "Return");
        EXPECT_EQ(program_->ExitCode(), 0);
        EXPECT_TRUE(WaitUntil([] { return !ReadWholeFile(LOG).empty(); }));
        EXPECT_EQ(ReadWholeFile(LOG), "The installer ran with 1 argument(s): --from 3.1.555.0\n");
        EXPECT_EQ(Setting("LastChecked"), -1);
        EXPECT_THAT(machine_.Requests(), Not(HasSubstr("/products.xml")));
        std::filesystem::remove(LOG);
        // The program keeps an installer, which may still run.
        for (const auto& entry : Downloads())
            std::filesystem::remove_all(entry);
    }
    // Presses a key in the current window; the check then goes on in the main window.
    void ExpectTheCheckAfter(const char* key) {
        EXPECT_THAT(program_->Output(), Not(HasSubstr("- Checking")));
        desktop_.Press(window_, key);
        EXPECT_TRUE(desktop_.WaitUntilGone(window_));
        EXPECT_TRUE(WaitUntilChecked(PRODUCTS));
        window_ = desktop_.WaitFor(program_->Id(), TITLE);
        EXPECT_TRUE(Close());
        EXPECT_FALSE(std::filesystem::exists(LOG));
        EXPECT_EQ(Setting("LastChecked"), Today());
        EXPECT_EQ(DownloadsLeft(), 0);
    }
    void ExpectAWarningAndTheCheck() {
        const Window question = window_;
        desktop_.Press(question, "Return");
        EXPECT_TRUE(desktop_.WaitUntilGone(question));
        window_ = desktop_.WaitFor(program_->Id(), TITLE);
        ExpectTheCheckAfter("Return");
    }

    static long DownloadsLeft() { return std::distance(begin(Downloads()), end(Downloads())); }
    static std::filesystem::directory_iterator Downloads() {
        const CVardoDirectoryPath folder = CVardoDirectoryPath::GetTempDirectory();
        return std::filesystem::directory_iterator(folder.GetDirectoryPathString().ToQString().toStdString());
    }
    static const inline std::string LOG = "/tmp/home/installer.log";
    static const inline std::string INSTALLER = "/tmp/run/site/program/installer.sh";
    static const inline std::string KEY = SampleMachine::FOLDER + "/share/VardoProductUpdate.pub";
};

TEST_F(SelfUpdateTest, SilentItRunsTheInstallerWhoseSignatureOnlyAKeyAsksFor) {
    const std::string key = ReadWholeFile(KEY);
    std::filesystem::remove(KEY);
    Open({"-silent"});
    ExpectTheInstallerToRun();
    EXPECT_THAT(machine_.Requests(), Not(HasSubstr("minisig")));
    std::ofstream(KEY) << key;
    Open({"-silent"});
    ExpectTheInstallerToRun();
    EXPECT_THAT(machine_.Requests(), HasSubstr("/program/installer.sh.minisig 200"));
    std::filesystem::remove(INSTALLER + ".minisig");
    Open({"-silent"});
    ExpectAWarningAndTheCheck();
}

TEST_F(SelfUpdateTest, RefusedDeclinedOrCancelledItGoesOnWithTheCheck) {
    Open();
    ExpectTheCheckAfter("Escape");
    std::ofstream(INSTALLER, std::ios::app) << "rm -r ~\n";
    Open();
    ExpectAWarningAndTheCheck();
    // At 2 kB a second the user can cancel the download, and then needs no warning.
    std::ofstream(INSTALLER, std::ios::app) << std::string(1'000'000, '#');
    Open();
    desktop_.Press(window_, "Return");
    window_ = desktop_.WaitFor(program_->Id(), std::string(TITLE) + ": Please Wait");
    EXPECT_TRUE(WaitUntil([] { return DownloadsLeft() == 1; }));
    ExpectTheCheckAfter("Escape");
}
