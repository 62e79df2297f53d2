// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The program's text: its layout and sharing, its operations, and its ways in and out of other encodings.
#include <gtest/gtest.h>
#include <QMetaType>
#include <clocale>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/CAtlString.h"
#include "platform/CAtlStringA.h"
#include "platform/TextConversion.h"
#include "support/TextPrinting.h"

namespace {

// Reference count, length and capacity, which stand in front of the characters.
template <typename Text>
std::vector<std::int32_t> HeaderOf(const Text& text) {
    const auto* fields = reinterpret_cast<const std::int32_t*>(text.GetString());
    return {fields[-3], fields[-2], fields[-1]};
}

using Fields = std::vector<std::int32_t>;

CAtlString LongText(int length) {
    return CAtlString(L'x', length);
}

}  // namespace

TEST(TextLayout, EveryWayToNothingIsTheOneEmptyText) {
    const CAtlString empty;
    CAtlString emptied(L"abc");
    emptied.Empty();
    CAtlString assigned(L"abc");
    assigned = L"";
    CAtlString copied(L"abc");
    copied = empty;
    CAtlString changed;
    changed.MakeUpper();
    changed.Trim();
    changed.Replace(L'a', L'b');
    changed += L"";
    const CAtlString texts[] = {L"",
                                static_cast<const wchar_t*>(nullptr),
                                "",
                                static_cast<const char*>(nullptr),
                                "\xC3\x28",
                                "\x80",
                                QString(),
                                CAtlStringA(""),
                                CAtlString(L'a', 0),
                                CAtlString(L'a', -1),
                                CAtlString(L"abc", 0),
                                emptied,
                                assigned,
                                copied,
                                changed,
                                CAtlString(L"abc").Left(-1),
                                empty + L"",
                                CAtlString(L"abc").Mid(7)};
    for (const CAtlString& text : texts)
        EXPECT_EQ(text.GetString(), empty.GetString()) << (&text - texts);
    EXPECT_EQ(HeaderOf(empty), (Fields{-1, 0, 0}));
    EXPECT_EQ(HeaderOf(CAtlStringA()), (Fields{-1, 0, 0}));
}

TEST(TextLayout, SharesUntilChanged) {
    CAtlString first(L"abc");
    EXPECT_EQ(HeaderOf(first), (Fields{1, 3, 3}));
    CAtlString second(first);
    EXPECT_EQ(second.GetString(), first.GetString());
    EXPECT_EQ(HeaderOf(first), (Fields{2, 3, 3}));
    second.SetAt(1, L'X');
    EXPECT_EQ(first, L"abc");
    EXPECT_EQ(second, L"aXc");
    EXPECT_EQ(HeaderOf(first), (Fields{1, 3, 3}));
    second += L"de";
    EXPECT_EQ(HeaderOf(second), (Fields{1, 5, 5}));
    const wchar_t* room = second.GetBuffer(9);
    second.ReleaseBuffer();
    second += L"fghi";
    EXPECT_EQ(second.GetString(), room);
    EXPECT_EQ(HeaderOf(second), (Fields{1, 9, 9}));
    EXPECT_EQ(HeaderOf(first + second), (Fields{1, 12, 12}));
}

TEST(TextLayout, LockedTextsAreCopiedDeeply) {
    CAtlString locked(L"abc");
    const_cast<std::int32_t*>(reinterpret_cast<const std::int32_t*>(locked.GetString()))[-3] = -1;
    const CAtlString copy(locked);  // NOLINT(performance-unnecessary-copy-initialization): the test.
    EXPECT_NE(copy.GetString(), locked.GetString());
    EXPECT_EQ(copy, locked);
    EXPECT_EQ(HeaderOf(copy), (Fields{1, 3, 3}));
}

TEST(TextLayout, BufferLengths) {
    CAtlString text;
    std::wcscpy(text.GetBuffer(10), L"four");
    text.ReleaseBuffer();
    EXPECT_EQ(text.GetLength(), 4);
    text.GetBuffer(2)[0] = L'F';
    text.ReleaseBuffer();
    EXPECT_EQ(text, L"Four");
    text.ReleaseBuffer(2);
    EXPECT_EQ(text, L"Fo");
    CAtlString full;
    std::fill_n(full.GetBuffer(3), 4, L'z');
    full.ReleaseBuffer();
    EXPECT_EQ(full, L"zzz");
}

TEST(TextOperations, MayTakeTheirOwnText) {
    CAtlString text(L"abc");
    text += text;
    text += text.GetString() + 4;
    EXPECT_EQ(text, L"abcabcbc");
    text = text.GetString() + 5;
    EXPECT_EQ(text, L"cbc");
    text.Insert(1, text);
    EXPECT_EQ(text, L"ccbcbc");
    EXPECT_EQ(text.Replace(text, text + L"!"), 1);
    text.Format(L"%s+%s", text.GetString(), text.GetString());
    EXPECT_EQ(text, L"ccbcbc!+ccbcbc!");
    const CAtlString& alias = text;
    text = alias;
    EXPECT_EQ(text, L"ccbcbc!+ccbcbc!");
}

TEST(TextOperations, PartsAndSearches) {
    const CAtlString text(L"abcdef");
    EXPECT_EQ(text.Mid(3, 10), L"def");
    EXPECT_EQ(text.Mid(7), L"");
    EXPECT_EQ(text.Mid(-2, 2), L"ab");
    EXPECT_EQ(text.Mid(2, -1), L"");
    EXPECT_EQ(text.Mid(2, INT32_MAX), L"cdef");
    EXPECT_EQ(text.Left(99).GetString(), text.GetString());
    EXPECT_EQ(text.Right(2), L"ef");
    EXPECT_EQ(text.Right(-1), L"");
    EXPECT_EQ(text.Find(L"cd"), 2);
    EXPECT_EQ(text.Find(L"cd", 3), -1);
    EXPECT_EQ(text.Find(L""), -1);
    EXPECT_EQ(text.Find(L"a", 7), -1);
    EXPECT_EQ(text.Find(L'f', 6), -1);
    EXPECT_EQ(text.FindOneOf(L"xfd"), 3);
    EXPECT_EQ(text.FindOneOf(L""), -1);
    EXPECT_EQ(CAtlString(L"a/b/c").ReverseFind(L'/'), 3);
    EXPECT_EQ(text.ReverseFind(L'/'), -1);
}

TEST(TextOperations, Changes) {
    CAtlString text(L"abcabc");
    EXPECT_EQ(text.Replace(L"bc", L"xyz"), 2);
    EXPECT_EQ(text, L"axyzaxyz");
    EXPECT_EQ(text.Replace(L"", L"q"), 0);
    EXPECT_EQ(text.Replace(L"a", L"a"), 0);
    EXPECT_EQ(text.Replace(L'a', L'a'), 0);
    EXPECT_EQ(text.Replace(L"xyz", L""), 2);
    EXPECT_EQ(text, L"aa");
    EXPECT_EQ(CAtlString(L"aaa").Replace(L"aa", L"b"), 1);
    EXPECT_EQ(text.Remove(L'a'), 2);
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(text.Insert(9, L"end"), 3);
    EXPECT_EQ(text.Insert(-4, L'>'), 4);
    EXPECT_EQ(text.Delete(-1, 1), 4);
    EXPECT_EQ(text.Delete(1, 99), 3);
    EXPECT_EQ(text.Delete(5), 1);
    EXPECT_EQ(text.Delete(0, 0), 1);
    EXPECT_EQ(text, L"e");
    CAtlString blank(L"\t\u2003 a b\r\n ");
    EXPECT_EQ(blank.Trim(), L"a b");
    EXPECT_EQ(CAtlString(L"//a//").TrimRight(L'/'), L"//a");
    EXPECT_EQ(CAtlString(L"xyaxy").TrimLeft(L"yx"), L"axy");
    EXPECT_EQ(CAtlString(L"xxx").TrimLeft(L'x'), L"");
    CAtlString cased(L"Stra\u00DFe \u00C4");
    cased.MakeLower();
    EXPECT_EQ(cased, L"stra\u00DFe \u00E4");
    EXPECT_EQ(cased.CompareNoCase(L"STRA\u00DFE \u00C4"), 0);
    EXPECT_GT(cased.Compare(L"STRA\u00DFE \u00C4"), 0);
    EXPECT_TRUE(CAtlString(L"B") < L"a" && CAtlString(L"a") >= CAtlString(L"a") && CAtlString(L"a") != L"A");
}

TEST(TextOperations, Tokens) {
    const struct {
        const wchar_t* text;
        std::vector<CAtlString> tokens;
        std::vector<int> positions;
    } cases[] = {
        {L",a,,b,", {L"a", L"b"}, {4, -1}},
        {L"one", {L"one"}, {-1}},
        {L", ,", {L""}, {-1}},
        {L"", {L""}, {-1}},
        {L"a b", {L"a", L"b"}, {2, -1}},
    };
    for (const auto& c : cases) {
        std::vector<CAtlString> tokens;
        std::vector<int> positions;
        for (int pos = 0; pos != -1; positions.push_back(pos))
            tokens.push_back(CAtlString(c.text).Tokenize(L" ,", pos));
        EXPECT_EQ(tokens, c.tokens) << testing::PrintToString(CAtlString(c.text));
        EXPECT_EQ(positions, c.positions) << testing::PrintToString(CAtlString(c.text));
    }
}

TEST(TextOperations, Formats) {
    CAtlString text;
    text.Format(L"%s=%d", L"key", 5);
    EXPECT_EQ(text, L"key=5");
    text.AppendFormat(L"%c%5.2f%%", L';', 1.5);
    EXPECT_EQ(text, L"key=5; 1.50%");
    for (const int length : {255, 256, 257, 70000}) {
        text.Format(L"%s|", LongText(length).GetString());
        EXPECT_EQ(text.GetLength(), length + 1);
        EXPECT_EQ(text.Right(2), L"x|");
    }
    for (const char* locale : {"C", "C.UTF-8"}) {
        std::setlocale(LC_ALL, locale);
        text.Format(L"%s", L"\u4E2D\U0001F600");
        EXPECT_EQ(text, L"\u4E2D\U0001F600");
    }
    text = L"kept";
    text.Format(L"%hs", "\xFF not of this locale");
    EXPECT_EQ(text, L"kept");
    text.AppendFormat(L"%*d", CAtlString::MAX_FORMATTED, 1);
    EXPECT_EQ(text, L"kept");
    text.Format(nullptr);
    EXPECT_EQ(text, L"");
}

TEST(TextEncodings, DecodesWellFormedSequencesAndStops) {
    const struct {
        const char* bytes;
        const wchar_t* text;
    } cases[] = {
        {"\xC3\xA9", L"\u00E9"},
        {"\x7F\xC2\x80", L"\u007F\u0080"},
        {"\xDF\xBF\xE0\xA0\x80", L"\u07FF\u0800"},
        {"\xED\x9F\xBF\xEE\x80\x80", L"\uD7FF\uE000"},
        {"\xEF\xBF\xBF\xF0\x90\x80\x80", L"\uFFFF\U00010000"},
        {"\xF4\x8F\xBF\xBF!", L"\U0010FFFF!"},
        {"a\xC3(", L"a"},             // truncated by another character
        {"a\xE4\xB8", L"a"},          // truncated by the end
        {"a\xF0\x9F\x98", L"a"},      //
        {"a\xC0\x80", L"a"},          // overlong
        {"a\xC1\xBF", L"a"},          //
        {"a\xE0\x9F\xBF", L"a"},      //
        {"a\xF0\x8F\xBF\xBF", L"a"},  //
        {"a\xED\xA0\x80", L"a"},      // a surrogate
        {"a\xF4\x90\x80\x80", L"a"},  // beyond the last code point
        {"a\xF5\x80\x80\x80", L"a"},  //
        {"a\x80z", L"a"},             // a continuation without a lead
    };
    for (const auto& c : cases) {
        EXPECT_EQ(CAtlString(c.bytes), c.text) << testing::PrintToString(c.bytes);
        EXPECT_EQ(CAtlString(CAtlStringA(c.bytes)), c.text) << testing::PrintToString(c.bytes);
    }
    EXPECT_EQ(CAtlString(CAtlStringA("a\0b", 3)).GetLength(), 3);
}

TEST(TextEncodings, EncodesAndStopsAtSurrogates) {
    const wchar_t beyond[] = {L'a', static_cast<wchar_t>(0x200000), static_cast<wchar_t>(-1), L'b', 0};
    const struct {
        const wchar_t* text;
        const char* bytes;
    } cases[] = {
        {L"\u007F\u0080\u07FF", "\x7F\xC2\x80\xDF\xBF"},
        {L"\u0800\uFFFF", "\xE0\xA0\x80\xEF\xBF\xBF"},
        {L"\U00010000\U0010FFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
        {L"ab\xD800"
         L"cd",
         "ab"},
        {L"ab\xDFFF", "ab"},
        {beyond,
         "a\xEF\xBF\xBD\xEF\xBF\xBD"
         "b"},
        {L"", ""},
        {nullptr, ""},
    };
    for (const auto& c : cases) {
        EXPECT_STREQ(DuplicateAsUtf8(c.text).get(), c.bytes);
        EXPECT_STREQ(CAtlStringA(c.text).GetString(), c.bytes);
    }
}

TEST(TextEncodings, NarrowsOrEncodesByForm) {
    const CAtlString wide(L"\u00E9\u0142\U0001F600");
    EXPECT_STREQ(CAtlStringA(wide).GetString(), "\xE9\x42");
    EXPECT_EQ(CAtlStringA(wide).GetLength(), 3);
    CAtlStringA assigned;
    assigned = L"\u00E9";
    EXPECT_STREQ(assigned.GetString(), "\xE9");
    EXPECT_EQ(assigned.ToQString(), QString(QChar(0xE9)));
    EXPECT_STREQ(CAtlStringA(L"\u00E9").GetString(), "\xC3\xA9");
    EXPECT_STREQ(CAtlStringA(QString(QChar(0xE9))).GetString(), "\xC3\xA9");
}

TEST(TextEncodings, MeetsQString) {
    const QString grinning = QString::fromUtf8("\xF0\x9F\x98\x80");
    EXPECT_EQ(grinning.size(), 2);
    EXPECT_EQ(CAtlString(grinning).GetLength(), 1);
    EXPECT_EQ(CAtlString(grinning).ToQString(), grinning);
    EXPECT_EQ(CAtlString(QString(QLatin1String("a\0b", 3))).GetLength(), 3);
    EXPECT_EQ(CAtlString(L"a\0b", 3).ToQString(), "a");
    EXPECT_EQ(CAtlString('\xE9')[0], static_cast<wchar_t>(-23));
    EXPECT_STREQ(QMetaType::fromType<CAtlString>().name(), "CAtlString");
}

TEST(TextEncodings, LocaleConversions) {
    wchar_t wide[8] = {};
    EXPECT_EQ(MultiByteToWideChar(0, 0, "h\xC3\xA9", -1, nullptr, 0), 3);
    EXPECT_EQ(MultiByteToWideChar(0, 0, "h\xC3\xA9", -1, wide, 8), 2);
    EXPECT_EQ(CAtlString(wide), L"h\u00E9");
    EXPECT_EQ(MultiByteToWideChar(0, 0, "h\xC3\xA9", 1, wide, 8), 1);
    EXPECT_EQ(MultiByteToWideChar(0, 0, "\xFF", -1, wide, 8), 0);
    for (const int length : {0, -2})
        EXPECT_EQ(MultiByteToWideChar(0, 0, "abc", length, wide, 8), 0);
    EXPECT_EQ(MultiByteToWideChar(0, 0, "", -1, nullptr, 0), 0);
    EXPECT_EQ(MultiByteToWideChar(0, 0, nullptr, -1, wide, 8), 0);
    char narrow[8] = {};
    bool usedDefault = true;
    EXPECT_EQ(WideCharToMultiByte(0, 0, L"h\u00E9", -1, nullptr, 0, nullptr, &usedDefault), 4);
    EXPECT_FALSE(usedDefault);
    EXPECT_EQ(WideCharToMultiByte(0, 0, L"h\u00E9", -1, narrow, 8, "?", nullptr), 3);
    EXPECT_STREQ(narrow, "h\xC3\xA9");
    EXPECT_EQ(WideCharToMultiByte(0, 0, L"abc", -1, narrow, 2, nullptr, nullptr), 2);
    EXPECT_EQ(WideCharToMultiByte(0, 0, nullptr, -1, narrow, 8, nullptr, nullptr), 0);
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(WideCharToMultiByte(0, 0, L"\u00E9", -1, narrow, 8, nullptr, nullptr), 0);
    std::setlocale(LC_ALL, "");
}
