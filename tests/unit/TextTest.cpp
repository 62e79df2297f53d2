// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The program's texts: layout, sharing, operations and encodings; and the versions that it reads from texts.
#include <gtest/gtest.h>
#include <cstdint>
#include <string>
#include <vector>

#include "DataTable.h"
#include "platform/text/CAtlString.h"
#include "platform/text/CAtlStringA.h"
#include "platform/text/TextConversion.h"
#include "products/CVersionString.h"
#include "support/TextPrinting.h"

namespace {

using Fields = std::vector<std::int32_t>;

// Reference count, length and capacity, which lie before the characters.
Fields HeaderOf(const CAtlString& text) {
    const auto* fields = reinterpret_cast<const std::int32_t*>(text.GetString());
    return {fields[-3], fields[-2], fields[-1]};
}

}  // namespace

TEST(TextLayout, SharesUntilChangedUnlessLocked) {
    CAtlString first(L"abc");
    CAtlString second(first);
    EXPECT_EQ(HeaderOf(first), (Fields{2, 3, 3}));
    second.Replace(L'b', L'X');
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
    CAtlString full;
    std::fill_n(full.GetBuffer(3), 4, L'z');
    full.ReleaseBuffer();
    EXPECT_EQ(full, L"zzz");
}

TEST(TextOperations, AreSafeAtTheirEnds) {
    CAtlString text(L"abc");
    text += text;
    text += text.GetString() + 4;
    text = text.GetString() + 5;
    text = text + L"+" + text;
    EXPECT_EQ(text, L"cbc+cbc") << "a text that takes from itself";
    EXPECT_EQ(text.Mid(2, INT32_MAX), L"c+cbc");
    EXPECT_EQ(text.Delete(INT32_MIN, 1), 7);
    EXPECT_EQ(text.Delete(1, INT32_MAX), 6);
    EXPECT_EQ(text, L"b");
    const CAtlString cut(L"ab\0c", 4);
    EXPECT_EQ(cut, CAtlString(L"ab\0d", 4)) << "compared up to the first 0";
    EXPECT_LT(cut, CAtlString(L"ac\0a", 4));
    EXPECT_GT(cut, L"a");
    EXPECT_EQ(CAtlString(L"Stra\u00DFe \u00C4").CompareNoCase(L"STRA\u00DFE \u00E4"), 0);
}

TEST(TextEncodings, StopAtWhatIsIllegal) {
    for (const char* sequence :
         {"\xC3(", "\xE4\xB8", "\xC0\x80", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\x80z"})
        EXPECT_EQ(CAtlString((std::string("\U0010FFFF") + sequence).c_str()), L"\U0010FFFF") << sequence;
    EXPECT_EQ(EncodeUtf8(L"ab\xDFFF!"), "ab");
    const wchar_t beyond[] = {static_cast<wchar_t>(0x200000), static_cast<wchar_t>(-1), L'!', 0};
    EXPECT_STREQ(CAtlStringA(beyond).GetString(), "\xEF\xBF\xBD\xEF\xBF\xBD!");
}

TEST(TextEncodings, NarrowOrEncodeByForm) {
    EXPECT_STREQ(CAtlStringA(CAtlString(L"\u00E9\u0142\U0001F621")).GetString(), "\xE9\x42!");
    EXPECT_EQ(HeaderOf("\u00E9\u00E8"), (Fields{1, 2, 2}));
    const QString crying = QString::fromUtf8("\xF0\x9F\x98\xA1");
    EXPECT_EQ(CAtlString(crying), L"\U0001F621");
    EXPECT_EQ(CAtlString(crying).ToQString(), crying);
}

TEST(Versions, UnusualTexts) {
    for (const QStringList& row : DataTable("versions.txt")) {
        EXPECT_EQ(CVersionString(row[0]).IsValid(), row[2] == "valid") << row[0].toStdString();
        EXPECT_EQ(CVersionString(row[0]).GetString(), CAtlString(row[1]));
    }
    const QString nines(100'000, '9');
    EXPECT_EQ(CVersionString(nines + ".1.1." + nines).GetString(), L"2147483647.1.1.2147483647");
    CVersionString again(L"1.2.3.4");
    EXPECT_EQ(again.SetString(CAtlStringA("x.5.y.6")).GetString(), L"1.5.3.6")
        << "a part without a number keeps the one from before";
}

TEST(Versions, AreTotallyOrdered) {
    const auto ranks = DataTable("version-order.txt");
    for (std::size_t i = 0; i < ranks.size(); ++i)
        for (std::size_t j = 0; j < ranks.size(); ++j)
            for (const QString& a : ranks[i])
                for (const QString& b : ranks[j]) {
                    SCOPED_TRACE((a + " and " + b).toStdString());
                    EXPECT_EQ(CVersionString(a).IsLess(CVersionString(b)), i < j);
                    EXPECT_EQ(CVersionString(a).IsEqual(CVersionString(b)), i == j);
                    EXPECT_EQ(CVersionString(a).IsGreater(CVersionString(b)), i > j);
                }
}
