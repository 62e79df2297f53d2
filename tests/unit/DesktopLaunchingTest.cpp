// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Which program opens an address on each desktop, and how processes are started.
#include <gtest/gtest.h>
#include <QTimer>
#include <csignal>
#include <filesystem>
#include <fstream>

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
    // In the order of the enumerators.
    const QStringList kinds{"unknown", "KDE", "GNOME", "other"};
    for (const QStringList& row : DataTable("desktops.txt")) {
        const auto set = [&](const char* name, int cell) {
            return ScopedEnvironment(name, row[cell] == "-" ? nullptr : row[cell].toUtf8().constData());
        };
        const ScopedEnvironment session = set("DESKTOP_SESSION", 0);
        const ScopedEnvironment gnome = set("GNOME_DESKTOP_SESSION_ID", 1);
        const ScopedEnvironment kde = set("KDE_FULL_SESSION", 2);
        EXPECT_EQ(DetectDesktop(), kinds.indexOf(row[3])) << row.join(" | ").toStdString();
    }
}

TEST(Launching, TriesTheDesktopThenThePath) {
    const TemporaryTree tree;
    for (const char* file : {"a/opera", "a/konqueror", "b/firefox", "c \u4E2D/mozilla", "d/xdg-open"})
        tree.Write(file, "");
    const QString root = QString::fromStdString(tree.Root());
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(tree.Path("b"));
    for (const QStringList& row : DataTable("launchings.txt")) {
        SCOPED_TRACE(row.join(" | ").toStdString());
        const auto filled = [&](int cell) {
            return QString(row[cell]).replace('%', root).replace('@', PASSED);
        };
        const ScopedEnvironment session("DESKTOP_SESSION",
                                        row[0] == "-" ? nullptr : row[0].toUtf8().constData());
        const ScopedEnvironment path("PATH", filled(1).toUtf8().constData());
        RecordingStarter starter;
        starter.launcherEnds = row[2] == "well";
        EXPECT_EQ(OpenURL(ADDRESS, starter), row[3] == "yes");
        EXPECT_EQ(starter.asked, filled(4).split(", ", Qt::SkipEmptyParts));
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
