// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Which program opens an address on each desktop, and how processes are started.
#include <gtest/gtest.h>
#include <QTimer>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>
#include <tuple>

#include "DataTable.h"
#include "platform/desktop/CProcessStarter.h"
#include "platform/desktop/DesktopLaunching.h"
#include "support/ScopedEnvironment.h"
#include "support/TextPrinting.h"

namespace {

const QString ADDRESS = QStringLiteral("http://h/\u4E2D \"q\" $(x)?a=1&b");
const QString PASSED = QStringLiteral("http://h/%E4%B8%AD%20%22q%22%20$(x)?a=1&b");

// Starts no process, and records each request: "run" or "start", the program and its arguments.
class RecordingStarter : public IProcessStarter {
public:
    bool RunAndWait(const QString& program, const QStringList& arguments, int limitMs) override {
        EXPECT_EQ(limitMs, 30000);
        asked += QStringList("run") + QStringList(program) + arguments;
        return launcherEnds;
    }
    bool StartDetached(const QString& program, const QStringList& arguments) override {
        asked += QStringList("start") + QStringList(program) + arguments;
        return false;
    }
    bool launcherEnds = true;
    QStringList asked;
};

}  // namespace

TEST(DesktopKinds, FollowTheSession) {
    const std::map<QString, DesktopKind> kinds{{"unknown", DESKTOP_UNKNOWN},
                                               {"KDE", DESKTOP_KDE},
                                               {"GNOME", DESKTOP_GNOME},
                                               {"other", DESKTOP_OTHER}};
    for (const QStringList& row : DataTable("desktops.txt")) {
        const auto set = [&](const char* name, int cell) {
            return ScopedEnvironment(name, row[cell] == "-" ? nullptr : row[cell].toUtf8().constData());
        };
        const ScopedEnvironment session = set("DESKTOP_SESSION", 0);
        const ScopedEnvironment gnome = set("GNOME_DESKTOP_SESSION_ID", 1);
        const ScopedEnvironment kde = set("KDE_FULL_SESSION", 2);
        EXPECT_EQ(DetectDesktop(), kinds.at(row[3])) << row.join(" | ").toStdString();
    }
}

TEST(Launching, TriesTheDesktopThenThePath) {
    const TemporaryTree tree;
    for (const char* file : {"a/opera", "a/konqueror", "b/firefox", "c \u4E2D/mozilla", "d/xdg-open"})
        tree.Write(file, "");
    const QString root = QString::fromStdString(tree.Root());
    const QStringList gnome{"run", "gnome-www-browser", PASSED};
    const QStringList kde{"run", "kfmclient", "openURL", PASSED};
    const QStringList opera{"start", root + "/a/opera", PASSED};
    const std::tuple<const char*, const char*, bool, bool, QStringList> cases[] = {
        {"kde", "%/a", false, true, kde + opera},
        {"gnome", "%/a", true, true, gnome},
        {"gnome", "%/none", false, false, gnome},
        {"xfce", "%/a", true, true, opera},
        {nullptr, "%/none:%/a:%/b", true, true, opera},
        {nullptr, "::%/a:", true, true, opera},
        {nullptr, "%/c \u4E2D", true, true, {"start", root + "/c \u4E2D/mozilla", PASSED}},
        {"xfce", "%/d:%/a", true, true, opera},
        {"kde", "%/d", false, true, kde + QStringList{"start", root + "/d/xdg-open", PASSED}},
        {nullptr, "", true, false, {}},
    };
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(tree.Path("b"));
    for (const auto& [session, path, launcherEnds, opened, asked] : cases) {
        const ScopedEnvironment sessionSet("DESKTOP_SESSION", session);
        const ScopedEnvironment pathSet("PATH", QString(path).replace("%", root).toUtf8().constData());
        RecordingStarter starter;
        starter.launcherEnds = launcherEnds;
        EXPECT_EQ(OpenURL(ADDRESS, starter), opened) << path;
        EXPECT_EQ(starter.asked, asked) << path;
    }
    std::filesystem::current_path(before);
}

TEST(Launching, OnlyWebAddressesArePassedOn) {
    const ScopedEnvironment session("DESKTOP_SESSION", "kde");
    std::vector<QStringList> rows = DataTable("web-pages.txt");
    for (const char* refused : {" http://h", "\nhttp://h", "h.com\x0A"})
        rows.push_back({refused, ""});
    rows.push_back({"http://h/" + QString(131'072, 'x'), ""});
    for (const QStringList& row : rows) {
        RecordingStarter starter;
        EXPECT_EQ(OpenURL(row[0], starter), !row[1].isEmpty()) << row[0].toStdString();
        EXPECT_EQ(starter.asked.isEmpty() ? "" : starter.asked.last(), row[1]);
    }
}

TEST(ProcessStarter, LeavesASlowProgramRunning) {
    CProcessStarter starter;
    const QStringList arguments{"-c", "echo $$ > /tmp/pid.new; mv /tmp/pid.new /tmp/pid; exec sleep 60"};
    const auto endSleeper = [] {
        int pid = 0;
        std::ifstream("/tmp/pid") >> pid;
        std::filesystem::remove("/tmp/pid");
        return pid > 0 && kill(pid, SIGKILL) == 0;
    };
    bool isLeft = false;
    // On a busy machine, even the shell may not have started in that time.
    for (int limitMs = 100; !isLeft && limitMs < 10000; limitMs *= 3) {
        ASSERT_FALSE(starter.RunAndWait("/bin/sh", arguments, limitMs));
        isLeft = endSleeper();
    }
    EXPECT_TRUE(isLeft);
    QTimer::singleShot(0, [&] { starter.StopWaiting(); });
    EXPECT_TRUE(starter.RunAndWait("sleep", {"1"}, 10000)) << "no other browser may follow the closed window";
}
