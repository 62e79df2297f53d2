// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// How the installed program starts: beside another copy, without a display, and silently; and that its file
// tells its version.
#include "e2e/ProgramTest.h"
#include "support/LoopbackServer.h"

using StartTest = ProgramTest;

TEST_F(StartTest, ASecondCopySaysSoAndOneThatEndsFreesTheLock) {
    machine_.KnowBoardSoftwareOnly();
    Open();
    EXPECT_TRUE(WaitUntil([] { return !std::filesystem::is_empty("/tmp/run/runtime"); }));
    const auto focused = [this] { return desktop_.Do({"getwindowfocus", "-f"}) == window_.id + "\n"; };
    desktop_.Do({"windowfocus", "--sync", window_.id});
    ASSERT_TRUE(focused());
    desktop_.Do({"search", "--maxdepth", "0", "", "windowfocus"});
    ASSERT_FALSE(focused());
    for (const char* argument : {"-silent", "interactive"}) {
        const auto second = machine_.Start(desktop_.Name(), {argument});
        EXPECT_EQ(second->ExitCode(), 0);
        EXPECT_EQ(second->Errors(), "VARDO Product Update is already running.\n");
        EXPECT_EQ(WaitUntil(focused, std::chrono::seconds(1)), argument == std::string("interactive"));
    }
    EXPECT_EQ(SampleMachine::StartReport({})->ExitCode(), 0) << "the report does not mind";
    EXPECT_TRUE(program_->IsRunning());
    program_->Signal(SIGKILL);
    ASSERT_TRUE(program_->WaitForEnd());

    LoopbackServer proxy;
    ProxySettings().setValue("HttpProxyHost", "127.0.0.1");
    ProxySettings().setValue("HttpProxyPort", proxy.Port());
    proxy.Serve(LoopbackServer::ANY, {LoopbackAnswer::Status(404), LoopbackAnswer::Silence()});
    Open();
    EXPECT_TRUE(WaitUntil([&] { return proxy.RequestCount() == 2; }));
    desktop_.Click(desktop_.WaitFor(program_->Id(), TITLE), -40, -20);
    EXPECT_TRUE(program_->WaitForEnd(std::chrono::seconds(1))) << "the check ends at once";
    EXPECT_EQ(Setting("LastChecked"), 0);
    // The second request is that of a product, the first that of the program's own description.
    for (const std::size_t requests : {2U, 1U}) {
        std::vector<LoopbackAnswer> answers(requests, LoopbackAnswer::Status(404));
        answers.back() = LoopbackAnswer::Silence();
        proxy.Serve(LoopbackServer::ANY, answers);
        const std::size_t before = proxy.RequestCount();
        Start({"-silent"});
        EXPECT_TRUE(WaitUntil([&] { return proxy.RequestCount() == before + requests; }));
        program_->Signal(SIGTERM);
        EXPECT_EQ(program_->ExitCode(), 0) << "it ends in order, and leaves no file";
    }
    proxy.Serve(LoopbackServer::ANY, LoopbackAnswer::Status(404));
    Open();
    EXPECT_TRUE(Close());
}

TEST_F(StartTest, WithoutADisplayItSaysWhatNeedsNone) {
    const std::string noDisplay =
        "VARDO Product Update needs a display, and neither DISPLAY nor WAYLAND_DISPLAY is set; "
        "VARDOUpdateReport checks without one.\n";
    for (const auto& [argument, needsDisplay] : {std::pair("interactive", true),
                                                 {"-silent", true},
                                                 {"-nonsense", false},
                                                 {"-username", false},
                                                 {"-platform", false}}) {
        program_ = machine_.Start("", {argument});
        EXPECT_EQ(program_->ExitCode(), 0) << argument;
        EXPECT_EQ(program_->Output(), needsDisplay ? "" : "error in parameters\n") << argument;
        EXPECT_EQ(program_->Errors(), needsDisplay ? noDisplay : "") << argument;
    }
    program_ = machine_.Start(":63", {"-silent"});
    EXPECT_EQ(program_->ExitCode(), 0) << program_->Errors();
    Open();
    desktop_.End();
    EXPECT_EQ(program_->ExitCode(), 0) << "it loses its display";
}

TEST_F(StartTest, SilentWithNothingNewAndNobodyWhoReadsItsOutputItNotesTheDayAndAsksNoMore) {
    machine_.KnowBoardSoftwareOnly();
    // Without this file the program writes before its first request, with which Qt begins to ignore SIGPIPE.
    std::filesystem::remove(SampleMachine::FOLDER + "/share/VardoProductUpdate.xml");
    UpdateSettings().setValue("LastChecked", Today() - 1);
    UpdateSettings().setValue("Interval", 1);
    // The desktop starts it at login, and the timer starts it later.
    for (const char* starter : {"autostart entry", "timer"}) {
        program_ = std::make_unique<ChildProcess>(
            "bash",
            std::vector<std::string>{"-c", "exec > >(exec true); wait $!; exec \"$0\" -silent",
                                     SampleMachine::FOLDER + "/bin/VARDOProductUpdate"},
            std::map<std::string, std::string>{{"DISPLAY", ""}, {"QT_QPA_PLATFORM", "offscreen"}});
        EXPECT_EQ(program_->ExitCode(), 0);
        EXPECT_EQ(machine_.Requests(), "GET /updates/board.xml 200\n") << starter;
        EXPECT_EQ(Setting("LastChecked"), Today());
    }
}

TEST_F(StartTest, SilentWithSomethingNewTheWindowOpensWhenTheCheckHasEnded) {
    Open({"-silent"});
    EXPECT_THAT(machine_.Requests(), HasSubstr("GET /updates/timeline.xml 200"));
    program_->Signal(SIGTERM);
    EXPECT_EQ(program_->ExitCode(), 0);
    EXPECT_EQ(Setting("LastChecked"), Today());
}

TEST(InstalledProgramTest, SaysWhatItIs) {
    const SampleMachine machine;
    const std::string executable = SampleMachine::FOLDER + "/bin/VARDOProductUpdate";
    ChildProcess nm("nm", {"-D", "--defined-only", "--format=posix", executable});
    ASSERT_TRUE(nm.WaitForEnd());
    for (const char* symbol : {"\nAPP_VERSION R", "\nBUILD_ID_NUM R", "\nBUILD_ID R"})
        EXPECT_THAT("\n" + nm.Output(), HasSubstr(symbol));

    using namespace std::string_literals;
    const std::string bytes = ReadWholeFile(executable);
    for (const std::string& text : {"\0003.1\0"s, "\0003.1.555.0\0"s, "[:VARDO Technologies 3.1.555.0:]\0"s})
        EXPECT_NE(bytes.find(text), std::string::npos) << text;
}
