// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Version texts as numbers, and their order. The common forms, and ranges, are in the tables of
// docs/formats.md.
#include <gtest/gtest.h>
#include <string>
#include <tuple>

#include "products/CVersionString.h"
#include "support/TextPrinting.h"

namespace {

CVersionString Version(const std::string& text) {
    return CVersionString(CAtlString(text.c_str()));
}

}  // namespace

TEST(Versions, UnusualTexts) {
    const std::string nines(1'000'000, '9');
    const std::tuple<const char*, std::string, bool, std::string> cases[] = {
        {"zeros alone", "0.00.000.0000000000", true, "0.0.0.0"},
        {"no octal numbers", "0000000010.09.8.7", true, "10.9.8.7"},
        {"an empty last part", "1.2.3.", false, "1.2.3."},
        {"a dot alone", ".", false, "."},
        {"no text", "", false, ""},
        {"signs and white space", "-1.+2. 3.4", true, "-1.2.3.4"},
        {"beyond 32 bits", "2147483648.-99999999999.1.1", true, "2147483647.-2147483648.1.1"},
        {"beyond 64 bits", "1.2.3.99999999999999999999999999", true, "1.2.3.2147483647"},
        {"a million digits to a part", nines + ".1." + nines + ".1", true, "2147483647.1.2147483647.1"},
        {"a million digits", nines, false, nines},
        {"14 digits", "12345678901234", true, "123.456.7890.1234"},
        {"11 digits", "12345678901", false, "12345678901"},
        {"9 digits", "102030405", true, "10.20.304.5"},
        {"6 digits", "102030", false, "102030"},
    };
    for (const auto& [situation, text, valid, shown] : cases) {
        EXPECT_EQ(Version(text).IsValid(), valid) << situation;
        EXPECT_EQ(Version(text).GetString(), CAtlString(shown.c_str())) << situation;
    }
    CVersionString again = Version("1.2.3.4");
    EXPECT_EQ(again.SetString(CAtlStringA("x.5.y.6")).GetString(), CAtlString("1.5.3.6"))
        << "a part without a number keeps the one from before";
}

TEST(Versions, AreTotallyOrdered) {
    const std::pair<int, const char*> ranked[] = {
        {0, ""},          {1, "1.2.3"},     {2, "99999"},    {3, "ABC"},      {4, "abc"},      {5, "abd"},
        {6, "-1.0.0.0"},  {7, "0.0.0.0"},   {7, "a.b.c.d"},  {8, "1.0.0.0"},  {8, "01.0.0.0"}, {9, "1.0.0.2"},
        {10, "1.0.0.10"}, {10, "10000010"}, {11, "1.0.1.0"}, {12, "1.1.0.0"}, {13, "10.0.0.0"}};
    for (const auto& [rankA, a] : ranked)
        for (const auto& [rankB, b] : ranked) {
            EXPECT_EQ(Version(a).IsLess(Version(b)), rankA < rankB) << a << " and " << b;
            EXPECT_EQ(Version(a).IsEqual(Version(b)), rankA == rankB) << a << " and " << b;
            EXPECT_EQ(Version(a).IsGreater(Version(b)), rankA > rankB) << a << " and " << b;
        }
}
