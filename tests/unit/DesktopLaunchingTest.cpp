// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Which program opens an address on which desktop, and what starting a process means.
#include <gtest/gtest.h>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "platform/CProcessStarter.h"
#include "platform/DesktopLaunching.h"
#include "support/ScopedEnvironment.h"
#include "support/TextPrinting.h"

namespace {

const wchar_t* const ADDRESS = L"http://h/\u4E2D \"q\" $(x)?a=1&b";

// Starts nothing; keeps a line "run: ..." or "start: ..." of what was asked, with "|" between the arguments.
class RecordingStarter : public IProcessStarter {
public:
    explicit RecordingStarter(bool launcherEnds) : launcherEnds_(launcherEnds) {}
    bool RunAndWait(const QString& program, const QStringList& arguments, int limitMs) override {
        EXPECT_EQ(limitMs, 30000);
        Record("run: ", program, arguments);
        return launcherEnds_;
    }
    bool StartDetached(const QString& program, const QStringList& arguments) override {
        Record("start: ", program, arguments);
        return false;
    }
    std::vector<std::string> asked;

private:
    void Record(const char* how, const QString& program, const QStringList& arguments) {
        asked.push_back(how + (QStringList(program) + arguments).join('|').toStdString());
    }
    bool launcherEnds_;
};

class Launching : public testing::Test {
protected:
    void SetUp() override {
        for (const char* file : {"a/opera", "a/konqueror", "b/firefox", "b/other", "c \u4E2D/mozilla"}) {
            const std::filesystem::path path = std::filesystem::path("/tmp/path") / file;
            std::filesystem::create_directories(path.parent_path());
            std::ofstream(path.string()) << "";
        }
    }
    void TearDown() override { std::filesystem::remove_all("/tmp/path"); }
};

}  // namespace

TEST(DesktopKinds, FollowTheSession) {
    const struct {
        const char* session;
        const char* gnome;
        const char* kde;
        int kind;
    } cases[] = {
        {nullptr, "1", "true", 0},
        {"kde-plasma", nullptr, nullptr, 1},
        {"KDE", "1", nullptr, 1},
        {"Kde", nullptr, nullptr, 3},
        {"ubuntu-gnome", nullptr, nullptr, 2},
        {"GNOME", nullptr, "1", 2},
        {"xfce", "1", "1", 3},
        {"", "1", "1", 3},
        {"default", "1", "1", 2},
        {"default", nullptr, "true", 1},
        {"DEFAULT", nullptr, "", 1},
        {"default", nullptr, nullptr, 3},
        {"gnome-kde", nullptr, nullptr, 1},
    };
    for (const auto& c : cases) {
        const ScopedEnvironment session("DESKTOP_SESSION", c.session);
        const ScopedEnvironment gnome("GNOME_DESKTOP_SESSION_ID", c.gnome);
        const ScopedEnvironment kde("KDE_FULL_SESSION", c.kde);
        EXPECT_EQ(DetectDesktop(), c.kind) << (c.session ? c.session : "(unset)");
    }
}

TEST_F(Launching, TriesTheDesktopThenThePath) {
    const std::string address = CAtlString(ADDRESS).ToQString().toStdString();
    const std::string gnome = "run: gnome-www-browser|" + address;
    const std::string kde = "run: kfmclient|openURL|" + address;
    const std::string opera = "start: /tmp/path/a/opera|" + address;
    const struct {
        const char* situation;
        const char* session;
        const char* path;
        bool launcherEnds;
        bool opened;
        std::vector<std::string> asked;
    } cases[] = {
        {"KDE", "kde", "/tmp/path/a", true, true, {kde}},
        {"KDE's launcher fails", "kde", "/tmp/path/a", false, true, {kde, opera}},
        {"GNOME", "gnome", "/tmp/path/a", true, true, {gnome}},
        {"GNOME's launcher fails", "gnome", "/tmp/path/a", false, true, {gnome, opera}},
        {"launcher fails, no browser", "gnome", "/tmp/none", false, false, {gnome}},
        {"other", "xfce", "/tmp/path/a", true, true, {opera}},
        {"unknown", nullptr, "/tmp/path/a", true, true, {opera}},
        {"first directory decides", nullptr, "/tmp/none:/tmp/path/a:/tmp/path/b", true, true, {opera}},
        {"list order within it",
         nullptr,
         "/tmp/path/b:/tmp/path/a",
         true,
         true,
         {"start: /tmp/path/b/firefox|" + address}},
        {"empty entries", nullptr, "::/tmp/path/a:", true, true, {opera}},
        {"a directory in any script",
         nullptr,
         "/tmp/path/c \u4E2D",
         true,
         true,
         {"start: /tmp/path/c \u4E2D/mozilla|" + address}},
        {"empty PATH", nullptr, "", true, false, {}},
        {"no PATH", nullptr, nullptr, true, false, {}},
    };
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path("/tmp/path/b");
    for (const auto& c : cases) {
        const ScopedEnvironment session("DESKTOP_SESSION", c.session);
        const ScopedEnvironment path("PATH", c.path);
        RecordingStarter starter(c.launcherEnds);
        EXPECT_EQ(OpenURL(ADDRESS, starter), c.opened) << c.situation;
        EXPECT_EQ(starter.asked, c.asked) << c.situation;
    }
    std::filesystem::current_path(before);
}

TEST_F(Launching, AnOptionIsNoAddress) {
    const ScopedEnvironment session("DESKTOP_SESSION", "kde");
    const ScopedEnvironment path("PATH", "/tmp/path/a");
    RecordingStarter starter(true);
    EXPECT_FALSE(OpenURL(L"--remote=x", starter));
    EXPECT_TRUE(starter.asked.empty());
}

TEST(ProcessStarter, ArgumentsArriveAsTheyAre) {
    const QStringList arguments{"-c", "printf '%s' \"$1\" > /tmp/argument", "sh",
                                CAtlString(ADDRESS).ToQString()};
    CProcessStarter starter;
    EXPECT_TRUE(starter.RunAndWait("/bin/sh", arguments, 10000));
    std::string argument;
    std::getline(std::ifstream("/tmp/argument"), argument);
    EXPECT_EQ(argument, CAtlString(ADDRESS).ToQString().toStdString());
    EXPECT_TRUE(starter.RunAndWait("/bin/sh", {"-c", "exit 3"}, 10000));
    EXPECT_FALSE(starter.RunAndWait("/tmp/no-such-program", {}, 10000));
    EXPECT_FALSE(starter.StartDetached("/tmp/no-such-program", {}));
    std::filesystem::remove("/tmp/argument");
}

TEST(ProcessStarter, LeavesASlowProgramRunning) {
    CProcessStarter starter;
    const QStringList arguments{"-c", "echo $$ > /tmp/pid.new; mv /tmp/pid.new /tmp/pid; exec sleep 60"};
    int pid = 0;
    int limitMs = 100;
    // A busy machine may not even have started the shell in that time.
    for (; pid == 0 && limitMs < 10000; limitMs *= 3) {
        ASSERT_FALSE(starter.RunAndWait("/bin/sh", arguments, limitMs));
        std::ifstream("/tmp/pid") >> pid;
    }
    ASSERT_GT(pid, 0);
    EXPECT_EQ(kill(pid, 0), 0);
    EXPECT_EQ(kill(pid, SIGKILL), 0);
    std::filesystem::remove("/tmp/pid");
}
