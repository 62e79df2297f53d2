// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include <gtest/gtest.h>

#include "app/CSingleInstanceLock.h"

#include <csignal>
#include <fstream>
#include <optional>

#include <sys/ipc.h>
#include <sys/sem.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class SingleInstanceLock : public testing::Test {
protected:
    SingleInstanceLock() { std::ofstream(FILE_NAME) << "x"; }
    ~SingleInstanceLock() override { unlink(FILE_NAME); }

    static bool SetExists() { return semget(ftok(FILE_NAME, 'q'), 1, 0) != -1; }

    // A program whose folder has a name in another script.
    static constexpr char FILE_NAME[] = "/tmp/программа";
};

TEST_F(SingleInstanceLock, ExcludesASecondHolderUntilItEnds) {
    std::optional<CSingleInstanceLock> first(std::in_place, FILE_NAME, 'q');
    EXPECT_TRUE(first->IsHeld());
    EXPECT_FALSE(CSingleInstanceLock(FILE_NAME, 'q').IsHeld());
    EXPECT_FALSE(CSingleInstanceLock(FILE_NAME, 'q').IsHeld()) << "a refused one must not release the lock";
    first.reset();
    EXPECT_FALSE(SetExists());
    EXPECT_TRUE(CSingleInstanceLock(FILE_NAME, 'q').IsHeld());
}

TEST_F(SingleInstanceLock, KeepsFilesAndProjectsApart) {
    const CSingleInstanceLock first(FILE_NAME, 'q');
    const CSingleInstanceLock otherFile("/tmp", 'q');
    const CSingleInstanceLock otherProject(FILE_NAME, 'r');
    EXPECT_TRUE(first.IsHeld() && otherFile.IsHeld() && otherProject.IsHeld());
}

TEST_F(SingleInstanceLock, IsNotHeldWithoutItsFile) {
    EXPECT_FALSE(CSingleInstanceLock("/tmp/no such file", 'q').IsHeld());
}

TEST_F(SingleInstanceLock, IsFreeAgainWhenItsHolderWasKilled) {
    const pid_t child = fork();
    if (child == 0) {
        const CSingleInstanceLock lock(FILE_NAME, 'q');
        if (lock.IsHeld())
            raise(SIGKILL);
        _exit(1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    ASSERT_TRUE(SetExists()) << "the dead holder leaves its set behind";
    const CSingleInstanceLock next(FILE_NAME, 'q');
    EXPECT_TRUE(next.IsHeld());
    EXPECT_FALSE(CSingleInstanceLock(FILE_NAME, 'q').IsHeld());
}

}  // namespace
