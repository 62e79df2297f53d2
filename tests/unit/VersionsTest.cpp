// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Version texts as numbers, their order, and ranges of them.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "products/CVersionString.h"
#include "products/CVersionStringRange.h"
#include "support/TextPrinting.h"

namespace {

CVersionString Version(const char* text) {
    return CVersionString(CAtlString(text));
}

}  // namespace

TEST(Versions, TextsThatAreRead) {
    const struct {
        const char* situation;
        const char* text;
        bool valid;
        const char* shown;
    } cases[] = {
        {"four parts", "1.2.3.4", true, "1.2.3.4"},
        {"leading zeros", "01.002.0003.00004", true, "1.2.3.4"},
        {"zeros alone", "0.00.000.0", true, "0.0.0.0"},
        {"no octal numbers", "010.09.8.7", true, "10.9.8.7"},
        {"a fifth part is left unread", "1.2.3.4.5", true, "1.2.3.4"},
        {"three parts", "1.2.3", false, "1.2.3"},
        {"an empty part", "1..3.4", false, "1..3.4"},
        {"an empty last part", "1.2.3.", false, "1.2.3."},
        {"a dot alone", ".", false, "."},
        {"no text", "", false, ""},
        {"signs and white space", "-1.+2. 3.4", true, "-1.2.3.4"},
        {"text after a number", "1.2.3.4abc", true, "1.2.3.4"},
        {"no numbers at all", "a.b.c.d", true, "0.0.0.0"},
        {"beyond 32 bits", "2147483648.-99999999999.1.1", true, "2147483647.-2147483648.1.1"},
        {"beyond 64 bits", "1.2.3.99999999999999999999999999", true, "1.2.3.2147483647"},
        {"12 digits", "123456789012", true, "1.234.5678.9012"},
        {"wide zeros", "000000000000", true, "0.0.0.0"},
        {"14 digits", "12345678901234", true, "123.456.7890.1234"},
        {"15 digits", "123456789012345", false, "123456789012345"},
        {"11 digits", "12345678901", false, "12345678901"},
        {"10 digits", "1234567890", false, "1234567890"},
        {"9 digits", "102030405", true, "10.20.304.5"},
        {"8 digits", "10203040", true, "1.2.30.40"},
        {"7 digits: third part last", "1020304", true, "1.2.4.3"},
        {"6 digits", "102030", false, "102030"},
        {"5 digits", "12345", false, "12345"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.situation);
        const CVersionString version = Version(c.text);
        EXPECT_EQ(version.IsValid(), c.valid);
        EXPECT_EQ(version.GetString(), CAtlString(c.shown));
        CVersionString narrow;
        EXPECT_TRUE(narrow.SetString(CAtlStringA(c.text)).IsEqual(version));
    }
}

TEST(Versions, APartWithoutANumberKeepsTheOneFromBefore) {
    CVersionString version = Version("1.2.3.4");
    EXPECT_EQ(version.SetString(CAtlString("x.5.y.6")).GetString(), CAtlString("1.5.3.6"));
}

TEST(Versions, TextsOfAnyLengthAreHarmless) {
    const std::string digits(1'000'000, '9');
    EXPECT_TRUE(Version((digits + "." + digits + ".1.1").c_str()).IsValid());
    EXPECT_FALSE(Version(digits.c_str()).IsValid());
    EXPECT_FALSE(Version(std::string(1'000'000, '.').c_str()).IsValid());
}

// The sorted texts must compare by their places; texts of one line are equal.
TEST(Versions, AreTotallyOrdered) {
    const std::vector<std::vector<const char*>> ascending = {
        {""},
        {"1.2.3"},
        {"99999"},
        {"ABC"},
        {"abc"},
        {"abd"},
        {"-1.0.0.0"},
        {"0.0.0.0", "a.b.c.d", "00000000"},
        {"1.0.0.0", "01.0.0.0"},
        {"1.0.0.2"},
        {"1.0.0.10", "10000010"},
        {"1.0.1.0"},
        {"1.1.0.0"},
        {"10.0.0.0"},
    };
    for (std::size_t i = 0; i < ascending.size(); ++i)
        for (std::size_t j = 0; j < ascending.size(); ++j)
            for (const char* a : ascending[i])
                for (const char* b : ascending[j]) {
                    SCOPED_TRACE(std::string(a) + " and " + b);
                    EXPECT_EQ(Version(a).IsLess(Version(b)), i < j);
                    EXPECT_EQ(Version(a).IsEqual(Version(b)), i == j);
                    EXPECT_EQ(Version(a).IsGreater(Version(b)), i > j);
                }
}

TEST(VersionRanges, WhatTheyContain) {
    const struct {
        const char* situation;
        const char* from;
        const char* to;
        std::vector<const char*> in;
        std::vector<const char*> out;
    } cases[] = {
        {"both ends belong to it",
         "1.0.0.0",
         "2.0.0.0",
         {"1.0.0.0", "1.5.0.0", "2.0.0.0"},
         {"0.9.9.9", "2.0.0.1", "", "x"}},
        {"ends in the wrong order", "2.0.0.0", "1.0.0.0", {"1.0.0.0", "1.5.0.0", "2.0.0.0"}, {"2.0.0.1"}},
        {"an upper end alone", "", "3.0.0.0", {"0.0.0.1", "3.0.0.0", "", "x"}, {"3.0.0.1"}},
        {"a lower end alone reaches down", "3.0.0.0", "", {"0.0.0.1", "3.0.0.0"}, {"3.0.0.1"}},
        {"no end", "", "", {""}, {"0.0.0.0", "1.0.0.0", "x"}},
        {"one version", "1.2.3.4", "1.2.3.4", {"1.2.3.4"}, {"1.2.3.3", "1.2.3.5"}},
    };
    for (const auto& c : cases) {
        const CVersionStringRange range(Version(c.from), Version(c.to));
        for (const char* version : c.in)
            EXPECT_TRUE(range.Contains(Version(version))) << c.situation << ": " << version;
        for (const char* version : c.out)
            EXPECT_FALSE(range.Contains(Version(version))) << c.situation << ": " << version;
    }
}

TEST(VersionRanges, AreOrderedByTheirLowerEndsAndEqualInBoth) {
    const auto range = [](const char* from, const char* to) {
        return CVersionStringRange(Version(from), Version(to));
    };
    EXPECT_TRUE(range("1.0.0.0", "9.0.0.0").IsLess(range("2.0.0.0", "3.0.0.0")));
    EXPECT_FALSE(range("1.0.0.0", "2.0.0.0").IsLess(range("1.0.0.0", "3.0.0.0")));
    EXPECT_TRUE(range("1.0.0.0", "2.0.0.0").IsEqual(range("2.0.0.0", "1.0.0.0")));
    EXPECT_FALSE(range("1.0.0.0", "2.0.0.0").IsEqual(range("1.0.0.0", "3.0.0.0")));
}
