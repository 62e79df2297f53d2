// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The XML door: what passes, what does not, and how long a hostile text may take.
#include <gtest/gtest.h>
#include <ctime>
#include <fstream>
#include <string>

#include <unistd.h>

#include "platform/XmlFile.h"
#include "support/TextPrinting.h"

namespace {

// Of processor time, so that a busy machine does not count.
#ifdef __SANITIZE_ADDRESS__
constexpr std::clock_t SOON = 10 * CLOCKS_PER_SEC;
#else
constexpr std::clock_t SOON = CLOCKS_PER_SEC;
#endif

CAtlStringA Bytes(const std::string& text) {
    return CAtlStringA(text.data(), static_cast<int>(text.size()));
}

bool Parses(const std::string& text, TiXmlEncoding encoding = TIXML_ENCODING_UTF8) {
    TiXmlDocument document;
    const bool parsed = ParseXml(Bytes(text), encoding, document);
    EXPECT_EQ(parsed, document.RootElement() != nullptr);
    return parsed;
}

std::string Repeated(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
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

// The attribute "v" of the root element, or "(rejected)".
CAtlString ValueIn(const std::string& text, TiXmlEncoding encoding) {
    TiXmlDocument document;
    return ParseXml(Bytes(text), encoding, document) ? XmlAttribute(*document.RootElement(), "v")
                                                     : CAtlString(L"(rejected)");
}

const std::string SAMPLE =
    "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<!-- a > b --><!DOCTYPE list>\n"
    "<list v='\xE4\xB8\xAD&#x4E2D;&amp;'><x/><y "
    "z=\"1>2\">t\xC3\xA9xt</y><![CDATA[<raw>]]>\xF0\x9F\x98\x80</list>\n";

}  // namespace

TEST(XmlDoor, KnowsGoodFromBad) {
    const struct {
        const char* situation;
        std::string text;
        bool good;
    } cases[] = {
        {"nothing", "", false},
        {"white space only", " \r\n\t", false},
        {"no element", "<?xml version='1.0'?><!-- c -->", false},
        {"text before the element", "text<a/>", false},
        {"one element", "<a/>", true},
        {"the sample", SAMPLE, true},
        {"never closed", "<a><b></b>", false},
        {"closed by another name", "<a></b>", false},
        {"attribute without value", "<a b/>", false},
        {"doubled attribute", "<a b='1' b='2'/>", false},
        {"attribute without end quote", "<a b='1/>", false},
        {"NUL inside", std::string("<a>\0</a>", 8), false},
        {"NUL behind", std::string("<a/>\0<b/>", 9), false},
        {"UTF-16", std::string("\xFF\xFE<\0a\0/\0>\0", 10), false},
        {"lone lead byte swallows the end", "<a>\xF0</a>", false},
        {"invalid bytes in text", "<a>\xFF\xFE\x80</a>", true},
        {"entity that hides markup", "<a>&#\"<b>#65;</a>", false},
        {"declaration cut off behind a blank", "<a/><?xml ", false},
        {"declaration alone and cut off", "<?xml version='1.0' ", false},
        {"numeric entity at the end", "<a>&#", false},
        {"hexadecimal entity at the end", "<a>&#x", false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Parses(c.text), c.good) << c.situation;
        EXPECT_EQ(Parses(c.text, TIXML_DEFAULT_ENCODING), c.good || c.text == "<a>\xF0</a>") << c.situation;
    }
}

TEST(XmlDoor, BoundsHoldAtTheirEdge) {
    const std::string open = "<a b=\"\xE0\" c=\"><d>";
    const struct {
        const char* situation;
        std::string text;
        bool good;
    } cases[] = {
        {"deepest", Nested(MAX_XML_DEPTH), true},
        {"one level too deep", Nested(MAX_XML_DEPTH + 1), false},
        {"comments close nothing", Repeated("<a><!--</a>-->", MAX_XML_DEPTH + 1), false},
        {"character data closes nothing", Repeated("<a><![CDATA[</a>]]>", MAX_XML_DEPTH + 1), false},
        {"values close nothing", Repeated("<a b='</a>'>", MAX_XML_DEPTH + 1), false},
        {"a lead byte takes the quote along", open + Nested(MAX_XML_DEPTH) + "\"></a>", false},
        {"depth in a value is none", "<a b=\"" + Nested(1000) + "\"/>", true},
        {"most attributes", WithAttributes(MAX_XML_ATTRIBUTES), true},
        {"one attribute too many", WithAttributes(MAX_XML_ATTRIBUTES + 1), false},
        {"100,000 siblings", "<a>" + Repeated("<b c='1'>t</b>", 100000) + "</a>", true},
        {"too many items", "<a>" + Repeated("<b/>", MAX_XML_ITEMS) + "</a>", false},
        {"too large", "<a>" + std::string(std::size_t{MAX_XML_BYTES}, ' ') + "</a>", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Parses(c.text), c.good) << c.situation;
}

TEST(XmlDoor, HostileTextsAreQuick) {
    const std::string big(std::size_t{10} * 1024 * 1024, 'v');
    const struct {
        const char* situation;
        std::string text;
        bool good;
    } cases[] = {
        {"100,000 levels", Nested(100000), false},
        {"10 MB value", "<a b='" + big + "'/>", true},
        {"10 MB name", "<" + big + "/>", true},
        {"10 MB without an end", "<a>" + Repeated("<!--", 1000000), false},
        {"20,000 attributes", WithAttributes(20000), false},
    };
    for (const auto& c : cases) {
        [[maybe_unused]] const std::clock_t start = std::clock();
        EXPECT_EQ(Parses(c.text), c.good) << c.situation;
        EXPECT_LT(std::clock() - start, SOON) << c.situation;
    }
}

TEST(XmlDoor, TruncatedAnywhereItOnlyFails) {
    const std::size_t last = SAMPLE.rfind("</list>") + 7;
    for (std::size_t length = 0; length < last; ++length) {
        EXPECT_FALSE(Parses(SAMPLE.substr(0, length))) << length;
        EXPECT_FALSE(Parses(SAMPLE.substr(0, length), TIXML_DEFAULT_ENCODING)) << length;
    }
    EXPECT_TRUE(Parses(SAMPLE.substr(0, last)));
}

TEST(XmlDoor, EncodingsAndValues) {
    const std::string latin = "<?xml version='1.0' encoding='ISO-8859-1'?>";
    const struct {
        const char* situation;
        std::string text;
        TiXmlEncoding encoding;
        const wchar_t* value;
    } cases[] = {
        {"UTF-8", "<a v='\xE4\xB8\xAD'/>", TIXML_ENCODING_UTF8, L"\u4E2D"},
        {"entities", "<a v='&#x4E2D;&#233;&lt;&quot;'/>", TIXML_ENCODING_UTF8, L"\u4E2D\u00E9<\""},
        {"no such attribute", "<a/>", TIXML_ENCODING_UTF8, L""},
        {"illegal byte ends the value",
         "<a v='ab\xFF"
         "cd'/>",
         TIXML_ENCODING_UTF8, L"ab"},
        {"surrogate entity ends the value", "<a v='ab&#xD800;cd'/>", TIXML_ENCODING_UTF8, L"ab"},
        {"mark found", "\xEF\xBB\xBF<a v='&#x4E2D;'/>", TIXML_DEFAULT_ENCODING, L"\u4E2D"},
        {"declared", " <?xml version='1.0' encoding='utf-8'?><a v='&#x4E2D;'/>", TIXML_DEFAULT_ENCODING,
         L"\u4E2D"},
        {"declared without encoding", "<?xml version='1.0'?><a v='&#x4E2D;'/>", TIXML_DEFAULT_ENCODING,
         L"\u4E2D"},
        {"single bytes declared", latin + "<a w='\xE9' v='x'/>", TIXML_DEFAULT_ENCODING, L"x"},
        {"single bytes despite the declaration", latin + "<a w='\xE9' v='x'/>", TIXML_ENCODING_UTF8,
         L"(rejected)"},
        {"line ends stay", "<a v='1\r\n2'/>", TIXML_ENCODING_UTF8, L"1\r\n2"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ValueIn(c.text, c.encoding), c.value) << c.situation;
}

TEST(XmlDoor, CondensesWhiteSpace) {
    TiXmlDocument document;
    ASSERT_TRUE(ParseXml("<a>  one\r\n\t two </a>", TIXML_ENCODING_UTF8, document));
    EXPECT_STREQ(document.RootElement()->GetText(), "one two");
}

TEST(XmlDoor, LoadsFilesWithOneKindOfLineEnd) {
    const CVardoFilePath path(L"/tmp/\u4E2D.xml");
    const std::string name = path.GetFilePathString().ToQString().toStdString();
    std::ofstream(name, std::ios::binary) << "\xEF\xBB\xBF<a v='1\r\n2\r3\n4\r\r5'>\r\n</a>";
    TiXmlDocument document;
    ASSERT_TRUE(LoadXml(path, document));
    EXPECT_EQ(XmlAttribute(*document.RootElement(), "v"), L"1\n2\n3\n4\n\n5");
    EXPECT_FALSE(LoadXml(CVardoFilePath(L"/tmp"), document));
    EXPECT_FALSE(LoadXml(CVardoFilePath(L"/tmp/missing.xml"), document));
    EXPECT_EQ(document.RootElement(), nullptr);
    EXPECT_EQ(truncate(name.c_str(), MAX_XML_BYTES + 1L), 0);
    EXPECT_TRUE(ReadFileBytes(path).IsEmpty());
    EXPECT_EQ(truncate(name.c_str(), 3), 0);
    EXPECT_STREQ(ReadFileBytes(path).GetString(), "\xEF\xBB\xBF");
    unlink(name.c_str());
}
