// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What strings files mean, whoever wrote them.
#include <gtest/gtest.h>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "i18n/StringsReader.h"
#include "support/TextPrinting.h"
#include "support/Utf16Bytes.h"

namespace {

using namespace std::string_literals;
// Keys and texts, in turn.
using Texts = std::vector<CAtlString>;

// Reads from a copy of exactly that size, so that the address sanitizer sees a step beyond its end.
Texts Read(const std::string& bytes) {
    const auto copy = std::make_unique<char[]>(bytes.size());
    bytes.copy(copy.get(), bytes.size());
    StringsReader reader(std::string_view(copy.get(), bytes.size()));
    Texts texts;
    CAtlString key;
    CAtlString text;
    while (reader.ReadPair(key, text))
        texts.insert(texts.end(), {key, text});
    return texts;
}

struct Case {
    const char* situation;
    std::u16string file;
    Texts texts;
};

}  // namespace

TEST(StringsReader, TokensBecomePairsInBothByteOrders) {
    const Case cases[] = {
        {"nothing but the mark", u"", {}},
        {"a quoted pair", u"\"Save As\" = \"Save &As\";", {L"Save As", L"Save &As"}},
        {"every separator", u"a=b;c d\te\rf\ng\0h"s, {L"a", L"b", L"c", L"d", L"e", L"f", L"g", L"h"}},
        {"runs of separators", u";;= a == b ;; \r\n c=\td;", {L"a", L"b", L"c", L"d"}},
        {"separators in quotes", u"\"A;B\"=\"1 = 2;\n\t\";", {L"A;B", L"1 = 2;\n\t"}},
        {"the six escapes", uR"("k"="\"\\\n\t\rx\ty\u00E9\u4e2D")", {L"k", L"\"\\\n\t\rx\ty\u00E9\u4E2D"}},
        {"an unknown escape", uR"("k"="a\qb" c=d)", {L"k", L"aqb", L"c", L"d"}},
        {"escaped digits that are none", uR"("k"="\u0g4Zz")", {L"k", L"\u0004z"}},
        {"escaped surrogates are one character", uR"("k"="\ud83d\uDE00")", {L"k", L"\U0001F600"}},
        {"a backslash outside of quotes", u"a\\n=b\\;", {L"a\\n", L"b\\"}},
        {"quotes inside a token", u"a\" b\"c=d;", {L"a bc", L"d"}},
        {"a comment between two pairs", u"a = b /* = ; \" */ c = d", {L"a", L"b", L"c", L"d"}},
        {"a comment does not end a token", u"a/**/b=c//x\nd;", {L"ab", L"cd"}},
        {"the shortest thing like a comment", u"/*/ a = b */ c = d", {L"c", L"d"}},
        {"a comment's sign in quotes", u"\"http://x/*\" = \"*/\"", {L"http://x/*", L"*/"}},
        {"a single slash", u"a/b = /", {L"a/b", L"/"}},
        {"an empty key is ignored", u"\"\" = x; a = b", {L"a", L"b"}},
        {"an empty text is a text", u"a = \"\"; c = d", {L"a", L"", L"c", L"d"}},
        {"the same key twice, in order", u"a=1;a=2", {L"a", L"1", L"a", L"2"}},
        {"a last key without a text", u"a=b;c", {L"a", L"b"}},
        {"the end inside quotes", u"a=\"b c", {L"a", L"b c"}},
        {"the end behind an opening quote", u"a=\"", {L"a", L""}},
        {"the end inside an escape", u"a=\"b\\", {L"a", L"b"}},
        {"the end inside four digits", u"a=\"b\\u41", {L"a", L"bA"}},
        {"the end inside a comment", u"a=b/*", {L"a", L"b"}},
        {"a comment without an end", u"a=b // c=d", {L"a", L"b"}},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.situation);
        EXPECT_EQ(Read(Utf16Bytes(one.file)), one.texts);
        EXPECT_EQ(Read(Utf16Bytes(one.file, true)), one.texts);
    }
}

TEST(StringsReader, BytesOutOfTheOrdinary) {
    const std::string little = Utf16Bytes(u"a=b");
    const struct {
        const char* situation;
        std::string bytes;
        Texts texts;
    } cases[] = {
        {"no bytes", "", {}},
        {"one byte", "\xFE", {}},
        {"no mark: the first unit is skipped all the same", Utf16Bytes(u"a=b;c").substr(2), {L"b", L"c"}},
        {"a last odd byte is dropped", little + 'x', {L"a", L"b"}},
        {"big-endian needs an even size", Utf16Bytes(u"a=b", true) + 'x', {}},
        {"a lone surrogate does not end the token", Utf16Bytes(u"a=x\xD800y"), {L"a", L"x\uFFFDy"}},
    };
    for (const auto& one : cases)
        EXPECT_EQ(Read(one.bytes), one.texts) << one.situation;
}

TEST(StringsReader, LongTokensAreCutAndTheNextIsRead) {
    const int most = StringsReader::MAX_TOKEN_UNITS;
    for (const int length : {most - 1, most, most + 1, most * 3}) {
        const std::u16string word(static_cast<size_t>(length), u'x');
        const CAtlString kept(L'x', std::min(length, most));
        const Texts expected = {kept, kept, L"a", L"b"};
        std::u16string file = word + u"=\"";
        file.append(word).append(u"\";a=b");
        EXPECT_EQ(Read(Utf16Bytes(file)), expected) << length;
    }
}
