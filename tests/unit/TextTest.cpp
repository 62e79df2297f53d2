// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The program's text: its layout and sharing, its operations, and its ways in and out of other encodings.
#include <gtest/gtest.h>
#include <clocale>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/CAtlString.h"
#include "platform/CAtlStringA.h"
#include "platform/TextConversion.h"
#include "support/TextPrinting.h"

namespace {

using Fields = std::vector<std::int32_t>;

// Reference count, length and capacity, which stand in front of the characters.
Fields HeaderOf(const CAtlString& text) {
    const auto* fields = reinterpret_cast<const std::int32_t*>(text.GetString());
    return {fields[-3], fields[-2], fields[-1]};
}

}  // namespace

TEST(TextLayout, EveryWayToNothingIsTheOneEmptyText) {
    const char* const noBytes = nullptr;
    const CAtlString abc(L"abc");
    CAtlString emptied(abc);
    emptied.Empty();
    const CAtlString texts[] = {"\x80", noBytes, QString(), emptied, abc.Mid(7), abc.Left(-1)};
    for (const CAtlString& text : texts)
        EXPECT_EQ(text.GetString(), CAtlString().GetString()) << (&text - texts);
    EXPECT_EQ(HeaderOf(emptied), (Fields{-1, 0, 0}));
}

TEST(TextLayout, SharesUntilChangedUnlessLocked) {
    CAtlString first(L"abc");
    CAtlString second(first);
    EXPECT_EQ(HeaderOf(first), (Fields{2, 3, 3}));
    second.SetAt(1, L'X');
    EXPECT_EQ(first + second, L"abcaXc");
    EXPECT_EQ(HeaderOf(first), (Fields{1, 3, 3}));
    const wchar_t* room = second.GetBuffer(9);
    second.ReleaseBuffer();
    second += L"defghi";
    EXPECT_EQ(second.GetString(), room);
    EXPECT_EQ(HeaderOf(first + second), (Fields{1, 12, 12}));
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): locks the text behind its back.
    const_cast<std::int32_t*>(reinterpret_cast<const std::int32_t*>(first.GetString()))[-3] = -1;
    const CAtlString copy(first);  // NOLINT(performance-unnecessary-copy-initialization): the test.
    EXPECT_EQ(copy, L"abc");
    EXPECT_EQ(HeaderOf(copy), (Fields{1, 3, 3}));
}

TEST(TextLayout, ABufferEndsAtTheFirst0OrFull) {
    CAtlString text;
    std::wcscpy(text.GetBuffer(10), L"four");
    text.ReleaseBuffer();
    EXPECT_EQ(text.GetLength(), 4);
    text.Empty();
    std::fill_n(text.GetBuffer(3), 4, L'z');
    text.ReleaseBuffer();
    EXPECT_EQ(text, L"zzz");
}

TEST(TextOperations, MayTakeTheirOwnText) {
    CAtlString text(L"abc");
    text += text;
    text += text.GetString() + 4;
    text = text.GetString() + 5;
    text.Insert(1, text);
    EXPECT_EQ(text, L"ccbcbc");
    text.Replace(text, text + L"!");
    text.Format(L"%s+%s", text.GetString(), text.GetString());
    EXPECT_EQ(text, L"ccbcbc!+ccbcbc!");
}

TEST(TextOperations, PartsAndSearches) {
    const CAtlString text(L"abcdec");
    EXPECT_EQ(text.Mid(-2, 2), L"ab");
    EXPECT_EQ(text.Mid(2, INT32_MAX), L"cdec");
    EXPECT_EQ(text.Right(99).GetString(), text.GetString());
    EXPECT_EQ(text.Find(L"c", 3), 5);
    EXPECT_EQ(text.Find(L""), -1);
    EXPECT_EQ(text.Find(L"a", 7), -1);
    EXPECT_EQ(text.FindOneOf(L"xed"), 3);
    EXPECT_EQ(text.ReverseFind(L'c'), 5);
    int pos = 0;
    EXPECT_EQ(text.Tokenize(L"abd", pos), L"c");
    EXPECT_EQ(pos, 4);
    EXPECT_EQ(text.Tokenize(L"c", pos), L"e");
    EXPECT_EQ(pos, -1);
}

// Below, at and above 0, also where the other characters are known to be the same or to be as many.
TEST(TextOperations, CompareUpToTheFirst0) {
    const CAtlString text(L"ab\0c", 4);
    for (const CAtlString& same : {CAtlString(L"ab\0c", 4), CAtlString(L"ab\0d", 4), CAtlString(L"ab")})
        EXPECT_EQ(text, same) << same.GetLength();
    EXPECT_LT(text, CAtlString(L"ac\0a", 4));
    EXPECT_LT(text, CAtlString(L"aba"));
    EXPECT_GT(text, CAtlString(L"aa\0d", 4));
    EXPECT_GT(text, CAtlString(L"a"));
}

TEST(TextOperations, Changes) {
    CAtlString text(L"abcabc");
    EXPECT_EQ(text.Replace(L"bc", L"xyz"), 2);
    EXPECT_EQ(text, L"axyzaxyz");
    EXPECT_EQ(text.Replace(L"", L"q"), 0);
    EXPECT_EQ(text.Remove(L'a'), 2);
    EXPECT_EQ(text.Insert(9, L"end"), 9);
    EXPECT_EQ(text.Insert(-4, L'>'), 10);
    EXPECT_EQ(text, L">xyzxyzend");
    EXPECT_EQ(text.Delete(-1, 1), 10);
    EXPECT_EQ(text.Delete(1, 99), 9);
    EXPECT_EQ(text, L"x");
    EXPECT_EQ(CAtlString(L"\t\u2003 a b\r\n ").Trim(), L"a b");
    EXPECT_EQ(CAtlString(L"//a//").TrimRight(L'/'), L"//a");
    EXPECT_EQ(CAtlString(L"xyaxy").TrimLeft(L"yx"), L"axy");
    EXPECT_EQ(CAtlString(L"Stra\u00DFe \u00C4").CompareNoCase(L"STRA\u00DFE \u00E4"), 0);
}

TEST(TextOperations, Formats) {
    CAtlString text;
    for (const int length : {255, 2046, 2047, 70000}) {
        text.Format(L"%s|", CAtlString(L'x', length).GetString());
        EXPECT_EQ(text, CAtlString(L'x', length) + L"|");
    }
    for (const char* locale : {"C", "C.UTF-8"}) {
        std::setlocale(LC_ALL, locale);
        text.Format(L"%s=%d", L"\u4E2D\U0001F600", 5);
        EXPECT_EQ(text, L"\u4E2D\U0001F600=5") << locale;
    }
    text = L"kept";
    text.Format(L"%hs", "\xFF not of this locale");
    text.AppendFormat(L"%*d", CAtlString::MAX_FORMATTED, 1);
    EXPECT_EQ(text, L"kept");
}

TEST(TextEncodings, Utf8ThereAndBack) {
    const std::pair<const wchar_t*, const char*> cases[] = {
        {L"\u007F\u0080\u07FF", "\x7F\xC2\x80\xDF\xBF"},
        {L"\u0800\uD7FF\uE000\uFFFF", "\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"},
        {L"\U00010000\U0010FFFF!", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF!"},
        {nullptr, ""},
    };
    for (const auto& [text, bytes] : cases) {
        EXPECT_EQ(CAtlString(bytes), text);
        EXPECT_STREQ(DuplicateAsUtf8(text).get(), bytes);
    }
    EXPECT_EQ(CAtlString(CAtlStringA("a\0b", 3)).GetLength(), 3);
    EXPECT_EQ(HeaderOf("\u00E9\u00E8"), (Fields{1, 2, 2}));
}

TEST(TextEncodings, EncodeTextsOfAnyLength) {
    for (const int length : {1, 256, 257, 3000})
        for (const char* character : {"x", "\xC3\xA9", "\xF4\x8F\xBF\xBF"}) {
            const CAtlString text(CAtlString(character).GetAt(0), length);
            const QByteArray bytes = QByteArray(character).repeated(length);
            EXPECT_STREQ(CAtlStringA(text.GetString()).GetString(), bytes.constData()) << length;
            const CAtlStringA cut((text + wchar_t(0xD800)).GetString());
            EXPECT_EQ(cut.GetLength(), bytes.size()) << length << " and what cannot be encoded";
        }
}

TEST(TextEncodings, StopAtWhatIsIllegal) {
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"truncated by another character", {"\xC3("}},
        {"truncated by the end", {"\xE4\xB8", "\xF0\x9F\x98"}},
        {"overlong", {"\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF"}},
        {"a surrogate", {"\xED\xA0\x80"}},
        {"beyond the last code point", {"\xF4\x90\x80\x80", "\xF5\x80\x80\x80"}},
        {"a continuation without a lead", {"\x80z"}},
    };
    for (const auto& [situation, sequences] : cases)
        for (const std::string& sequence : sequences)
            EXPECT_EQ(CAtlString(("a" + sequence).c_str()), L"a") << situation;
    for (const wchar_t surrogate : {wchar_t(0xD800), wchar_t(0xDFFF)})
        EXPECT_STREQ(DuplicateAsUtf8((CAtlString(L"ab") + surrogate + L"c").GetString()).get(), "ab");
    const wchar_t beyond[] = {static_cast<wchar_t>(0x200000), static_cast<wchar_t>(-1), L'!', 0};
    EXPECT_STREQ(CAtlStringA(beyond).GetString(), "\xEF\xBF\xBD\xEF\xBF\xBD!");
}

TEST(TextEncodings, NarrowOrEncodeByForm) {
    EXPECT_STREQ(CAtlStringA(CAtlString(L"\u00E9\u0142\U0001F621")).GetString(), "\xE9\x42!");
    CAtlStringA assigned;
    assigned = L"\u00E9";
    EXPECT_STREQ(assigned.GetString(), "\xE9");
    EXPECT_STREQ(CAtlStringA(QString(QChar(0xE9))).GetString(), "\xC3\xA9");
    const QString crying = QString::fromUtf8("\xF0\x9F\x98\xA1");
    EXPECT_EQ(CAtlString(crying), L"\U0001F621");
    EXPECT_EQ(CAtlString(crying).ToQString(), crying);
    EXPECT_EQ(CAtlString(QString(QLatin1String("a\0b", 3))).GetLength(), 3);
    EXPECT_EQ(CAtlString(L"a\0b", 3).ToQString(), "a");
}

TEST(TextEncodings, LocaleConversions) {
    wchar_t wide[8] = {};
    EXPECT_EQ(MultiByteToWideChar(0, 0, "h\xC3\xA9", -1, nullptr, 0), 3);
    EXPECT_EQ(MultiByteToWideChar(0, 0, "h\xC3\xA9", -1, wide, 8), 2);
    EXPECT_EQ(CAtlString(wide), L"h\u00E9");
    char narrow[8] = {};
    EXPECT_EQ(WideCharToMultiByte(0, 0, L"h\u00E9", -1, nullptr, 0, nullptr, nullptr), 4);
    EXPECT_EQ(WideCharToMultiByte(0, 0, L"h\u00E9", -1, narrow, 2, nullptr, nullptr), 2);
    EXPECT_STREQ(narrow, "h\xC3");
}
