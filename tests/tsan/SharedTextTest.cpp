// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Plain threads use texts that share one array; the thread sanitizer finds the races.
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "platform/text/CAtlString.h"

// In each round the threads race to free the array as its last owner, or to write into it as its only one.
TEST(SharedTexts, AreCopiedChangedAndFreedInThreads) {
    constexpr int THREADS = 4;
    const CAtlString original(L"shared \u4E2D text");
    for (int round = 0; round < 500; ++round) {
        std::vector<CAtlString> owners(THREADS, CAtlString(L"one array"));
        std::vector<std::thread> threads;
        threads.reserve(THREADS);
        for (int i = 0; i < THREADS; ++i)
            threads.emplace_back([&, i] {
                CAtlString copy(original);
                const CAtlString second = copy;
                copy.Replace(L's', static_cast<wchar_t>(L'0' + i));
                copy += second.Right(5);
                EXPECT_EQ(copy, (std::to_wstring(i) + L"hared \u4E2D text text").c_str());
                // All empty texts share one array, too.
                copy = CAtlString();
                copy += L"x";
                CAtlString& mine = owners[static_cast<std::size_t>(i)];
                if (i % 2 == 0)
                    return mine.Empty();
                *mine.GetBuffer(0) = static_cast<wchar_t>(L'0' + i);
                mine.ReleaseBuffer();
            });
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(owners[1], L"1ne array");
        EXPECT_EQ(owners[3], L"3ne array");
    }
    EXPECT_EQ(original, L"shared \u4E2D text");
    EXPECT_TRUE(CAtlString().IsEmpty());
}
