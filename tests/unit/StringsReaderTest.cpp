// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What strings files mean, whoever wrote them.
#include <gtest/gtest.h>
#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "i18n/StringsReader.h"
#include "support/TextPrinting.h"
#include "support/Utf16Bytes.h"

namespace {

using namespace std::string_literals;
using Pairs = std::vector<std::pair<CAtlString, CAtlString>>;

// Reads from a copy of exactly that size, so that the address sanitizer sees a step beyond its end.
Pairs Read(const std::string& bytes) {
    const auto copy = std::make_unique<char[]>(bytes.size());
    bytes.copy(copy.get(), bytes.size());
    StringsReader reader(std::string_view(copy.get(), bytes.size()));
    Pairs pairs;
    CAtlString key;
    CAtlString text;
    while (reader.ReadPair(key, text))
        pairs.emplace_back(key, text);
    return pairs;
}

struct Case {
    const char* situation;
    std::u16string file;
    Pairs pairs;
};

}  // namespace

TEST(StringsReader, TokensBecomePairsInBothByteOrders) {
    const Case cases[] = {
        {"nothing but the mark", u"", {}},
        {"a quoted pair", u"\"Save As\" = \"Save &As\";", {{L"Save As", L"Save &As"}}},
        {"every separator",
         u"a=b;c d\te\rf\ng\0h"s,
         {{L"a", L"b"}, {L"c", L"d"}, {L"e", L"f"}, {L"g", L"h"}}},
        {"runs of separators", u";;= a == b ;; \r\n c=\td;", {{L"a", L"b"}, {L"c", L"d"}}},
        {"separators in quotes", u"\"A;B\"=\"1 = 2;\n\t\";", {{L"A;B", L"1 = 2;\n\t"}}},
        {"the six escapes", uR"("k"="\"\\\n\t\rx\ty\u00E9\u4e2D")", {{L"k", L"\"\\\n\t\rx\ty\u00E9\u4E2D"}}},
        {"an unknown escape", uR"("k"="a\qb" c=d)", {{L"k", L"aqb"}, {L"c", L"d"}}},
        {"escaped digits that are none",
         uR"("k"="\u0g4Z1")",
         {{L"k",
           L"\x04"
           L"1"}}},
        {"escaped surrogates are one character", uR"("k"="\ud83d\uDE00")", {{L"k", L"\U0001F600"}}},
        {"a backslash outside of quotes", u"a\\n=b\\;", {{L"a\\n", L"b\\"}}},
        {"quotes inside a token", u"a\" b\"c=d;", {{L"a bc", L"d"}}},
        {"a comment between two pairs",
         u"key1 = value1 /* = ; \" */ key2 = value2",
         {{L"key1", L"value1"}, {L"key2", L"value2"}}},
        {"a comment does not end a token", u"a/**/b=c//x\nd;", {{L"ab", L"cd"}}},
        {"the shortest thing like a comment", u"/*/ a = b */ c = d", {{L"c", L"d"}}},
        {"a comment's sign in quotes", u"\"http://x/*\" = \"*/\"", {{L"http://x/*", L"*/"}}},
        {"a single slash", u"a/b = /", {{L"a/b", L"/"}}},
        {"an empty key is ignored", u"\"\" = x; a = b", {{L"a", L"b"}}},
        {"an empty text is a text", u"a = \"\"; c = d", {{L"a", L""}, {L"c", L"d"}}},
        {"the same key twice, in order", u"a=1;a=2", {{L"a", L"1"}, {L"a", L"2"}}},
        {"a last key without a text", u"a=b;c", {{L"a", L"b"}}},
        {"the end inside quotes", u"a=\"b c", {{L"a", L"b c"}}},
        {"the end behind an opening quote", u"a=\"", {{L"a", L""}}},
        {"the end inside an escape", u"a=\"b\\", {{L"a", L"b"}}},
        {"the end inside four digits", u"a=\"b\\u41", {{L"a", L"bA"}}},
        {"the end inside a comment", u"a=b/*", {{L"a", L"b"}}},
        {"a comment without an end", u"a=b // c=d", {{L"a", L"b"}}},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.situation);
        EXPECT_EQ(Read(Utf16Bytes(one.file)), one.pairs);
        EXPECT_EQ(Read(Utf16Bytes(one.file, true)), one.pairs);
    }
}

TEST(StringsReader, BytesOutOfTheOrdinary) {
    const std::string little = Utf16Bytes(u"a=b");
    const struct {
        const char* situation;
        std::string bytes;
        Pairs pairs;
    } cases[] = {
        {"no bytes", "", {}},
        {"one byte", "\xFE", {}},
        {"a mark alone", "\xFE\xFF", {}},
        {"no mark: the first unit is skipped all the same",
         little.substr(2) + Utf16Bytes(u";c=d").substr(2),
         {{L"b", L"c"}}},
        {"a last odd byte is dropped", little + 'x', {{L"a", L"b"}}},
        {"big-endian needs an even size", Utf16Bytes(u"a=b", true) + 'x', {}},
        {"a lone surrogate does not end the token", Utf16Bytes(u"a=x\xD800y b=c"),
         Read(Utf16Bytes(u"a=x\xFFFDy b=c"))},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.situation);
        EXPECT_EQ(Read(one.bytes), one.pairs);
    }
}

TEST(StringsReader, LongTokensAreCutAndTheNextIsRead) {
    const auto most = static_cast<size_t>(StringsReader::MAX_TOKEN_UNITS);
    for (const size_t length : {most - 1, most, most + 1, most * 3}) {
        const std::u16string word(length, u'x');
        const CAtlString kept(L'x', static_cast<int>(std::min(length, most)));
        const Pairs expected = {{kept, kept}, {L"a", L"b"}};
        std::u16string file = word + u"=\"";
        file.append(word).append(u"\";a=b");
        EXPECT_EQ(Read(Utf16Bytes(file)), expected) << length;
    }
}

TEST(StringsReader, AFileMayEndAnywhere) {
    const std::string whole =
        Utf16Bytes(u"/* c */ \"a b\" = \"\\u0041\\\"\"; // d\nkey=text; \"e\"=\"\U0001F600\";");
    const Pairs all = Read(whole);
    ASSERT_EQ(all.size(), 3U);
    for (size_t size = 0; size < whole.size(); ++size) {
        const Pairs some = Read(whole.substr(0, size));
        ASSERT_LE(some.size(), all.size()) << size;
        // Only the last pair may have been cut.
        for (size_t i = 0; i + 1 < some.size(); ++i)
            EXPECT_EQ(some[i], all[i]) << size;
        if (!some.empty()) {
            EXPECT_EQ(some.back().first, all[some.size() - 1].first) << size;
        }
    }
}
