// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Which program opens an address on which desktop, and what starting a process means.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QAbstractEventDispatcher>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <tuple>

#include "platform/desktop/CProcessStarter.h"
#include "platform/desktop/DesktopLaunching.h"
#include "support/ScopedEnvironment.h"
#include "support/TemporaryTree.h"
#include "support/TextPrinting.h"

namespace {

const QString ADDRESS = QStringLiteral("http://h/\u4E2D \"q\" $(x)?a=1&b");
const QString PASSED = QStringLiteral("http://h/%E4%B8%AD%20%22q%22%20$(x)?a=1&b");

// Starts nothing; keeps what was asked: "run" or "start", the program and its arguments.
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
    const std::tuple<const char*, const char*, const char*, DesktopKind> cases[] = {
        {nullptr, "1", "true", DESKTOP_UNKNOWN},      {"kde-plasma", nullptr, nullptr, DESKTOP_KDE},
        {"gnome-KDE", "1", nullptr, DESKTOP_KDE},     {"Kde", nullptr, nullptr, DESKTOP_OTHER},
        {"GNOME", nullptr, "1", DESKTOP_GNOME},       {"", "1", "1", DESKTOP_OTHER},
        {"default", "1", "1", DESKTOP_GNOME},         {"DEFAULT", nullptr, "", DESKTOP_KDE},
        {"default", nullptr, nullptr, DESKTOP_OTHER},
    };
    for (const auto& [session, gnome, kde, kind] : cases) {
        const ScopedEnvironment sessionSet("DESKTOP_SESSION", session);
        const ScopedEnvironment gnomeSet("GNOME_DESKTOP_SESSION_ID", gnome);
        const ScopedEnvironment kdeSet("KDE_FULL_SESSION", kde);
        EXPECT_EQ(DetectDesktop(), kind) << (session ? session : "(unset)");
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
    const QStringList mozilla{"start", root + "/c \u4E2D/mozilla", PASSED};
    const QStringList xdgOpen{"start", root + "/d/xdg-open", PASSED};
    const std::tuple<const char*, const char*, const char*, bool, bool, QStringList> cases[] = {
        {"KDE's launcher fails", "kde", "%/a", false, true, kde + opera},
        {"GNOME", "gnome", "%/a", true, true, gnome},
        {"launcher fails, no browser", "gnome", "%/none", false, false, gnome},
        {"other", "xfce", "%/a", true, true, opera},
        {"first directory decides", nullptr, "%/none:%/a:%/b", true, true, opera},
        {"empty entries", nullptr, "::%/a:", true, true, opera},
        {"a directory in any script", nullptr, "%/c \u4E2D", true, true, mozilla},
        {"a browser comes before xdg-open", "xfce", "%/d:%/a", true, true, opera},
        {"xdg-open when all else failed", "kde", "%/d", false, true, kde + xdgOpen},
        {"empty PATH", nullptr, "", true, false, {}},
    };
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(tree.Path("b"));
    for (const auto& [situation, session, path, launcherEnds, opened, asked] : cases) {
        const ScopedEnvironment sessionSet("DESKTOP_SESSION", session);
        const ScopedEnvironment pathSet("PATH", QString(path).replace("%", root).toUtf8().constData());
        RecordingStarter starter;
        starter.launcherEnds = launcherEnds;
        EXPECT_EQ(OpenURL(ADDRESS, starter), opened) << situation;
        EXPECT_EQ(starter.asked, asked) << situation;
    }
    std::filesystem::current_path(before);
}

TEST(Launching, OnlyWebAddressesArePassedOn) {
    const ScopedEnvironment session("DESKTOP_SESSION", "kde");
    const std::pair<const char*, const char*> opened[] = {
        {"http://h", "http://h"},
        {"HTTPS://h/-a", "HTTPS://h/-a"},
        {"Ftp://h/", "Ftp://h/"},
        {"www.h.com/x?a:b", "http://www.h.com/x?a:b"},
        {"h", "http://h"},
        {"localhost:8080/x", "http://localhost:8080/x"},
        {"h.com:80", "http://h.com:80"},
        {"\u00FC.de/ \u00FC", "http://%C3%BC.de/%20%C3%BC"},
    };
    for (const auto& [page, address] : opened) {
        RecordingStarter starter;
        EXPECT_TRUE(OpenURL(page, starter)) << page;
        EXPECT_EQ(starter.asked.last(), address);
    }
    for (const char* address :
         {"--remote=http://h", "-http://h", "", "http://", "http:h", "/etc/passwd", "../x.html", "C:\\x",
          "file:///etc/passwd", "javascript:alert(1)", "mailto:a@h.com", "a@h.com", "tel:5", "h.com:x",
          "h.com\x0A", " http://h", "\nhttp://h", "xhttp://h", "http\u017F://h"}) {
        RecordingStarter starter;
        EXPECT_FALSE(OpenURL(address, starter)) << address;
        EXPECT_TRUE(starter.asked.empty()) << address;
    }
}

TEST(ProcessStarter, ArgumentsArriveAsTheyAre) {
    const TemporaryTree tree;
    const QString file = QString::fromStdString(tree.Path("argument"));
    CProcessStarter starter;
    EXPECT_TRUE(
        starter.RunAndWait("/bin/sh", {"-c", "printf '%s' \"$2\" > $1; exit 3", "sh", file, ADDRESS}, 10000));
    EXPECT_EQ(ReadWholeFile(tree.Path("argument")), ADDRESS.toStdString());
    EXPECT_FALSE(starter.RunAndWait("/tmp/no-such-program", {}, 10000));
    EXPECT_FALSE(starter.StartDetached("/tmp/no-such-program", {}));
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
    // A busy machine may not even have started the shell in that time.
    for (int limitMs = 100; !isLeft && limitMs < 10000; limitMs *= 3) {
        ASSERT_FALSE(starter.RunAndWait("/bin/sh", arguments, limitMs));
        isLeft = endSleeper();
    }
    EXPECT_TRUE(isLeft);
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, [&] {
        if (!std::filesystem::exists("/tmp/pid"))
            return;
        user.stop();
        EXPECT_TRUE(starter.RunAndWait("/bin/true", {}, 10000)) << "one inside another";
        starter.StopWaiting();
    });
    user.start(5);
    EXPECT_TRUE(starter.RunAndWait("/bin/sh", arguments, 25000)) << "nobody waits for it any more";
    EXPECT_TRUE(endSleeper());
}
