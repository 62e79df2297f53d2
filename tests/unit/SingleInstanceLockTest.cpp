// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include <gtest/gtest.h>

#include "app/CActivationServer.h"
#include "app/CSingleInstanceLock.h"
#include "support/ScopedEnvironment.h"
#include "support/TemporaryTree.h"

#include <QTest>
#include <functional>
#include <optional>

#include <sys/ipc.h>
#include <sys/sem.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

bool IsHeld(const std::string& file, char project) {
    return CSingleInstanceLock(file.c_str(), project).IsHeld();
}

TEST(SingleInstanceLock, ExcludesASecondHolderOfTheSameFileAndProjectUntilItEnds) {
    const TemporaryTree tree;
    const std::string file = tree.Write("программа", "");
    std::optional<CSingleInstanceLock> first(std::in_place, file.c_str(), 'q');
    EXPECT_TRUE(first->IsHeld());
    EXPECT_FALSE(IsHeld(file, 'q'));
    EXPECT_FALSE(IsHeld(file, 'q')) << "a refused one must not release the lock";
    EXPECT_TRUE(IsHeld(file, 'r'));
    EXPECT_TRUE(IsHeld(tree.Root(), 'q'));
    EXPECT_FALSE(IsHeld(tree.Path("missing"), 'q'));
    first.reset();
    EXPECT_EQ(semget(ftok(file.c_str(), 'q'), 1, 0), -1) << "the set is left behind";
    EXPECT_TRUE(IsHeld(file, 'q'));
}

// Asks in a process of another user, which ends without tidying up.
bool AsNobody(const std::function<bool()>& question) {
    constexpr uid_t NOBODY = 65534;
    const pid_t child = fork();
    if (child == 0)
        _exit(setuid(NOBODY) == 0 && question() ? 0 : 1);
    int status = 0;
    waitpid(child, &status, 0);
    return status == 0;
}

TEST(SingleInstanceLock, IsSharedWithOtherUsersAndOutlivesNobody) {
    if (!AsNobody([] { return true; }))
        GTEST_SKIP() << "this user cannot become another one";
    const TemporaryTree tree;
    std::filesystem::permissions(tree.Root(), std::filesystem::perms::all);
    const std::string file = tree.Write("program", "");
    {
        const CSingleInstanceLock ours(file.c_str(), 'q');
        EXPECT_TRUE(AsNobody([&] { return !IsHeld(file, 'q'); })) << "held by another user";
    }
    std::optional<CSingleInstanceLock> theirs;
    EXPECT_TRUE(AsNobody([&] { return theirs.emplace(file.c_str(), 'q').IsHeld(); }));
    EXPECT_NE(semget(ftok(file.c_str(), 'q'), 1, 0), -1) << "they left it behind";
    EXPECT_TRUE(IsHeld(file, 'q'));
}

TEST(ActivationServer, HearsOfTheSameFileInADirectoryThatNobodyElseCanChange) {
    const TemporaryTree tree;
    const QString program = QString::fromStdString(tree.Write("программа", ""));
    const QString other = QString::fromStdString(tree.Write("other", ""));
    tree.MakeDirectory("own");
    std::filesystem::permissions(tree.MakeDirectory("open"), std::filesystem::perms::all);
    for (const auto& [folder, isHeard] : {std::pair("own", true), {"open", false}, {"missing", false}}) {
        const ScopedEnvironment runtime("XDG_RUNTIME_DIR", tree.Path(folder).c_str());
        int heard = 0;
        const CActivationServer server(program, [&heard] { ++heard; });
        QTest::qWait(CActivationServer::LISTENS_AFTER + 50);
        EXPECT_EQ(ActivateRunningCopy(program), isHeard) << folder;
        EXPECT_FALSE(ActivateRunningCopy(other));
        QTest::qWait(50);
        EXPECT_EQ(heard == 1, isHeard) << folder;
    }
}

}  // namespace
