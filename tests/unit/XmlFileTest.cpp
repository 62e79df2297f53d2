// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The reader of XML: which texts it accepts, and how long a hostile text may take.
#include <gtest/gtest.h>
#include <ctime>
#include <fstream>
#include <string>
#include <tuple>

#include <unistd.h>

#include "platform/xml/XmlFile.h"
#include "support/TextPrinting.h"

namespace {

// In processor time, so that other processes do not count; quadratic work takes far longer.
constexpr std::clock_t SOON = 10 * CLOCKS_PER_SEC;

// The attribute "v" of the root element, or "(rejected)".
CAtlString ValueIn(const std::string& text, TiXmlEncoding encoding) {
    TiXmlDocument document;
    const CAtlStringA bytes(text.data(), static_cast<int>(text.size()));
    const bool parsed = ParseXml(bytes, encoding, document);
    EXPECT_EQ(parsed, document.RootElement() != nullptr);
    return parsed ? XmlAttribute(*document.RootElement(), "v") : CAtlString(L"(rejected)");
}

bool Parses(const std::string& text, TiXmlEncoding encoding) {
    return ValueIn(text, encoding) != L"(rejected)";
}

std::string Repeated(const std::string& text, int count) {
    return QByteArray::fromStdString(text).repeated(count).toStdString();
}

std::string Nested(int levels) {
    return Repeated("<a>", levels) + Repeated("</a>", levels);
}

std::string WithAttributes(int count) {
    std::string text = "<a";
    for (int i = 0; i < count; ++i)
        text += " b" + std::to_string(i) + "='1'";
    return text + "/>";
}

}  // namespace

TEST(XmlDoor, KnowsGoodFromBadAtOnce) {
    const std::string swallowed = "<a b=\"\xE0\" c=\">" + Nested(MAX_XML_DEPTH) + "\"></a>";
    const std::tuple<const char*, std::string, bool, bool> cases[] = {
        {"no element", "<?xml version='1.0'?><!-- c -->", false, false},
        {"doubled attribute", "<a b='1' b='2'/>", false, false},
        {"NUL inside", std::string("<a/>\0</a>", 9), false, false},
        {"lone lead byte swallows the end", "<a>\xF0</a>", false, true},
        {"lead byte swallows the quote", swallowed, false, true},
        {"invalid bytes in text", "<a>\xFF\xFE\x80</a>", true, true},
        {"entity that hides markup", "<a>&#\"<b>#65;</a>", false, false},
        {"declaration cut off behind a blank", "<a/><?xml ", false, false},
        {"the greatest depth", Nested(MAX_XML_DEPTH), true, true},
        {"one level too deep", Nested(MAX_XML_DEPTH + 1), false, false},
        {"CDATA closes no element", Repeated("<a><![CDATA[</a>]]>", MAX_XML_DEPTH + 1), false, false},
        {"tags in a value do not nest", "<a b=\"" + Nested(1000) + "\"/>", true, true},
        {"as many attributes as may be", WithAttributes(MAX_XML_ATTRIBUTES), true, true},
        {"one attribute too many", WithAttributes(MAX_XML_ATTRIBUTES + 1), false, false},
        {"100,000 siblings", "<a>" + Repeated("<b c='1'>t</b>", 100000) + "</a>", true, true},
        {"too many items", "<a>" + Repeated("<b/>", MAX_XML_ITEMS) + "</a>", false, false},
        {"too large", "<a>" + std::string(std::size_t{MAX_XML_BYTES}, ' ') + "</a>", false, false},
        {"the longest value", "<a b='" + std::string(MAX_XML_VALUE - 2, 'x') + "'/>", true, true},
        {"one byte too long", "<a b='" + std::string(MAX_XML_VALUE - 1, 'x') + "'/>", false, false},
        {"1 MB without an end", "<a>" + Repeated("<!--", 250000), false, false},
    };
    for (const auto& [situation, text, goodAsUtf8, goodAsBytes] : cases) {
        const std::clock_t start = std::clock();
        EXPECT_EQ(Parses(text, TIXML_ENCODING_UTF8), goodAsUtf8) << situation;
        EXPECT_EQ(Parses(text, TIXML_DEFAULT_ENCODING), goodAsBytes) << situation;
        EXPECT_LT(std::clock() - start, SOON) << situation;
    }
}

TEST(XmlDoor, EncodingsAndValues) {
    constexpr TiXmlEncoding UTF8 = TIXML_ENCODING_UTF8;
    constexpr TiXmlEncoding FOUND = TIXML_DEFAULT_ENCODING;
    const std::string latin = "<?xml version='1.0' encoding='ISO-8859-1'?><a w='\xE9' v='x'/>";
    const std::tuple<const char*, std::string, TiXmlEncoding, const wchar_t*> cases[] = {
        {"entities", "<a v='&#x4E2D;&#233;&lt;&quot;'/>", UTF8, L"\u4E2D\u00E9<\""},
        {"illegal byte ends the value", "<a v='ab\xFF!'/>", UTF8, L"ab"},
        {"surrogate entity ends the value", "<a v='ab&#xD800;cd'/>", UTF8, L"ab"},
        {"line ends stay", "<a v='1\r\n2'/>", UTF8, L"1\r\n2"},
        {"byte order mark", "\xEF\xBB\xBF<a v='&#x4E2D;'/>", FOUND, L"\u4E2D"},
        {"UTF-8 declared", " <?xml version='1.0' encoding='utf-8'?><a v='&#x4E2D;'/>", FOUND, L"\u4E2D"},
        {"nothing declared", "<?xml version='1.0'?><a v='&#x4E2D;'/>", FOUND, L"\u4E2D"},
        {"single bytes declared", latin, FOUND, L"x"},
        {"single bytes despite the declaration", latin, UTF8, L"(rejected)"},
    };
    for (const auto& [situation, text, encoding, value] : cases)
        EXPECT_EQ(ValueIn(text, encoding), value) << situation;
}

TEST(XmlDoor, LoadsFilesWithOneKindOfLineEnd) {
    const CVardoFilePath path(L"/tmp/\u4E2D.xml");
    const std::string name = path.GetFilePathString().ToQString().toStdString();
    std::ofstream(name) << "\xEF\xBB\xBF<a v='1\r\n2\r3\n4\r\r5'>  condensed\r\n\t space </a>";
    TiXmlDocument document;
    ASSERT_TRUE(LoadXml(path, document));
    EXPECT_EQ(XmlAttribute(*document.RootElement(), "v"), L"1\n2\n3\n4\n\n5");
    EXPECT_STREQ(document.RootElement()->GetText(), "condensed space");
    EXPECT_FALSE(LoadXml(CVardoFilePath(L"/tmp"), document));
    EXPECT_EQ(document.RootElement(), nullptr);
    EXPECT_EQ(truncate(name.c_str(), MAX_XML_BYTES + 1L), 0);
    EXPECT_TRUE(ReadFileBytes(path).IsEmpty());
    EXPECT_EQ(truncate(name.c_str(), 3), 0);
    EXPECT_STREQ(ReadFileBytes(path).GetString(), "\xEF\xBB\xBF");
    unlink(name.c_str());
}
