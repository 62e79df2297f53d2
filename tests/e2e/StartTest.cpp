// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// How the installed program starts, and when it declines to.
#include <gmock/gmock.h>
#include <csignal>
#include <filesystem>

#include "e2e/ProgramTest.h"

using testing::HasSubstr;

using StartTest = ProgramTest;

TEST_F(StartTest, ASecondCopySaysSoAndLeavesTheFirstAlone) {
    Open();
    const auto second = machine_.Start(desktop_.Name());
    EXPECT_TRUE(second->WaitForEnd());
    EXPECT_EQ(second->ExitCode(), 0);
    EXPECT_EQ(second->Errors(), "VARDO Product Update is already running.\n");
    ASSERT_TRUE(WaitUntilChecked(PRODUCTS)) << program_->Output();
    EXPECT_TRUE(Close());
}

TEST_F(StartTest, AKilledCopyDoesNotBlockTheNext) {
    Open();
    program_->Signal(SIGKILL);
    ASSERT_TRUE(program_->WaitForEnd());
    Open();
    ASSERT_TRUE(WaitUntilChecked(PRODUCTS)) << program_->Output();
    EXPECT_TRUE(Close());
}

TEST_F(StartTest, ABadCommandLineNeedsNoDisplay) {
    for (const char* argument : {"-nonsense", "-username", "-platform"}) {
        const auto program = machine_.Start("", {argument});
        EXPECT_TRUE(program->WaitForEnd()) << argument;
        EXPECT_EQ(program->ExitCode(), 0) << argument;
        EXPECT_EQ(program->Output(), "error in parameters\n") << argument;
    }
}

TEST(InstalledProgramTest, WorksFromAFolderInAnyScript) {
    SampleMachine machine("/tmp/Обновление 製品 تحديث/v 1");
    const Desktop desktop;
    const auto program = machine.Start(desktop.Name());
    const Window window = desktop.WaitFor(program->Id(), "VARDO Product Update");
    EXPECT_TRUE(
        WaitUntil([&] { return program->Output().find("- Done VARDO Timeline") != std::string::npos; }));
    EXPECT_THAT(ReadWholeFile(machine.Folder() + "/share/products.xml"), HasSubstr("Version=\"1.3.0.0\""));
    const auto second = machine.Start(desktop.Name());
    EXPECT_TRUE(second->WaitForEnd());
    EXPECT_THAT(second->Errors(), HasSubstr("already running"));
    desktop.Press(window, "Escape");
    EXPECT_TRUE(program->WaitForEnd());
}

TEST(InstalledProgramTest, SaysWhatItIs) {
    const SampleMachine machine;
    const std::string executable = machine.Folder() + "/bin/VARDOProductUpdate";
    ChildProcess nm("nm", {"-D", "--defined-only", "--format=posix", executable});
    ASSERT_TRUE(nm.WaitForEnd());
    for (const char* symbol : {"APP_VERSION R", "BUILD_ID_NUM R", "BUILD_ID R"})
        EXPECT_THAT("\n" + nm.Output(), HasSubstr("\n" + std::string(symbol))) << symbol;

    using namespace std::string_literals;
    const std::string bytes = ReadWholeFile(executable);
    for (const std::string& text : {"\0003.1\0"s, "\0003.1.555.0\0"s, "[:VARDO Technologies 3.1.555.0:]\0"s})
        EXPECT_NE(bytes.find(text), std::string::npos) << text;
    const std::string icon = ReadWholeFile(VARDO_SOURCE_DIR "/resources/images/update.png");
    ASSERT_FALSE(icon.empty());
    EXPECT_NE(bytes.find(icon), std::string::npos) << "the icon is not stored as it is";
    EXPECT_TRUE(std::filesystem::is_directory(machine.Folder() + "/Languages"));
}
