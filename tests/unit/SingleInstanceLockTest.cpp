// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include <gtest/gtest.h>

#include "app/CSingleInstanceLock.h"
#include "support/TemporaryTree.h"

#include <optional>

#include <sys/ipc.h>
#include <sys/sem.h>

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

}  // namespace
