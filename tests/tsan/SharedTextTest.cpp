// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Texts that share one array, used from plain threads: the thread sanitizer is the judge.
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "platform/text/CAtlString.h"
#include "platform/text/CAtlStringA.h"

namespace {

constexpr int THREADS = 4;
constexpr int ROUNDS = 2000;

template <typename Work>
void InThreads(Work work) {
    std::vector<std::thread> threads;
    threads.reserve(THREADS);
    for (int i = 0; i < THREADS; ++i)
        threads.emplace_back(work, i);
    for (std::thread& thread : threads)
        thread.join();
}

}  // namespace

TEST(SharedTexts, AreCopiedReadAndChangedInThreads) {
    const CAtlString original(L"shared \u4E2D text");
    InThreads([&](int thread) {
        const std::wstring changed = std::to_wstring(thread) + L"hared_\u4E2D_text_text";
        for (int round = 0; round < ROUNDS; ++round) {
            CAtlString copy(original);
            const CAtlString second = copy;
            copy.Replace(L's', static_cast<wchar_t>(L'0' + thread));
            copy += second.Right(5);
            copy.Replace(L' ', L'_');
            EXPECT_EQ(copy, changed.c_str());
            // The empty text belongs to all, too.
            copy = CAtlString();
            copy += L"x";
            copy.Empty();
        }
    });
    EXPECT_EQ(original, L"shared \u4E2D text");
    EXPECT_TRUE(CAtlString().IsEmpty());
}

// Each round every owner tries to be the last one, or the one that may write in place.
TEST(SharedTexts, TheLastOwnerFreesOrWritesInPlace) {
    for (int round = 0; round < ROUNDS / 10; ++round) {
        std::vector<CAtlStringA> owners(THREADS, CAtlStringA("one array"));
        InThreads([&](int thread) {
            CAtlStringA& mine = owners[static_cast<std::size_t>(thread)];
            if (thread % 2 == 0)
                return mine.Empty();
            *mine.GetBuffer(0) = static_cast<char>('0' + thread);
            mine.ReleaseBuffer();
        });
        EXPECT_STREQ(owners[1].GetString(), "1ne array");
        EXPECT_STREQ(owners[3].GetString(), "3ne array");
    }
}
