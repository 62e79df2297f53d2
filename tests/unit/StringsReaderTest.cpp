// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What strings files mean, whoever wrote them.
#include <gtest/gtest.h>
#include <memory>

#include "DataTable.h"
#include "i18n/CStringsReader.h"
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
    CStringsReader reader(std::string_view(copy.get(), bytes.size()));
    Texts texts;
    CAtlString key;
    CAtlString text;
    while (reader.ReadPair(key, text))
        texts.insert(texts.end(), {key, text});
    return texts;
}

}  // namespace

TEST(CStringsReader, TokensBecomePairsInBothByteOrders) {
    std::vector<std::pair<std::u16string, Texts>> cases = {
        {u"", {}},
        {u"a=b;c d\te\rf\ng\0h;=\r\n"s, {L"a", L"b", L"c", L"d", L"e", L"f", L"g", L"h"}},
        {u"\"A;B\"=\"1 = 2;\n\t\";", {L"A;B", L"1 = 2;\n\t"}},
        {uR"("k"="\n\t\rx")", {L"k", L"\n\t\rx"}},
        {uR"("k"="\u0g4Zz")", {L"k", L"\u0004z"}},
        {u"a/**/b=c//x\nd;", {L"ab", L"cd"}},
    };
    for (const QStringList& row : DataTable("strings-files.txt"))
        cases.emplace_back(row[0].toStdU16String(), Texts(row.begin() + 1, row.end()));
    for (const auto& [file, texts] : cases) {
        EXPECT_EQ(Read(Utf16Bytes(file)), texts) << QString::fromStdU16String(file).toStdString();
        EXPECT_EQ(Read(Utf16Bytes(file, true)), texts) << QString::fromStdU16String(file).toStdString();
    }
}

TEST(CStringsReader, BytesOutOfTheOrdinary) {
    const Texts pair{L"a", L"b"};
    EXPECT_EQ(Read(""), Texts());
    EXPECT_EQ(Read("\xFE"), Texts());
    EXPECT_EQ(Read(Utf16Bytes(u"xa=b;c").substr(2)), pair) << "without a mark, the first unit is skipped";
    EXPECT_EQ(Read(Utf16Bytes(u"a=b") + 'x'), pair) << "a last odd byte is dropped";
    EXPECT_EQ(Read(Utf16Bytes(u"a=b", true) + 'x'), Texts()) << "big-endian needs an even size";
    EXPECT_EQ(Read(Utf16Bytes(u"a=x\xD800y")), (Texts{L"a", L"x\uFFFDy"})) << "a lone surrogate";
}
