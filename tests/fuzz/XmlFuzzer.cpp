// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The check of a text's bounds and the XML parser must see the same text: parsed elements nest no deeper than
// the check allows, and the parser reads no byte behind the padding.
#include <algorithm>
#include <cstring>

#include <sys/mman.h>
#include <unistd.h>

#include "fuzz/Fuzzing.h"
#include "platform/xml/XmlBounds.h"
#include "platform/xml/XmlFile.h"

namespace {

// Small inputs seldom nest deeper than this.
constexpr int DEEP = 6;

// Memory that ends at a page without access, because the parser is built without the sanitizers.
class GuardedMemory {
public:
    GuardedMemory()
        : page_(static_cast<std::size_t>(::sysconf(_SC_PAGESIZE))),
          start_(static_cast<char*>(
              ::mmap(nullptr, SIZE + page_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {
        Require(::mprotect(start_ + SIZE, page_, PROT_NONE) == 0, "the machine guards a page");
    }

    // Copies the text and its terminator to the end of the memory.
    const char* Place(const std::string& text) {
        Require(text.size() < SIZE, "inputs are small");
        char* at = start_ + SIZE - text.size() - 1;
        std::memcpy(at, text.c_str(), text.size() + 1);
        return at;
    }

private:
    static constexpr std::size_t SIZE = std::size_t{1} << 20U;

    std::size_t page_;
    char* start_;
};

int Depth(const TiXmlNode& node) {
    int deepest = 0;
    for (const TiXmlNode* child = node.FirstChild(); child; child = child->NextSibling())
        deepest = std::max(deepest, Depth(*child));
    return deepest + (node.ToElement() ? 1 : 0);
}

// The smallest limit of depth with which the text passes the check; from DEEP on, MAX_XML_DEPTH.
int SeenDepth(const std::string& padded, bool utf8) {
    int depth = 0;
    while (depth < DEEP && !IsWithinXmlBounds(padded, utf8, nullptr, depth))
        ++depth;
    return depth < DEEP ? depth : MAX_XML_DEPTH;
}

// Parses without rows and with them; a read behind the padding would end the process.
void CheckParser(const std::string& padded, TiXmlEncoding encoding, bool parsed) {
    static GuardedMemory memory;
    for (const int tabSize : {0, 1}) {
        TiXmlDocument document;
        document.SetTabSize(tabSize);
        document.Parse(memory.Place(padded), nullptr, encoding);
        Require(Depth(document) <= SeenDepth(padded, encoding == TIXML_ENCODING_UTF8),
                "the parser nests no deeper than the look saw");
        Require(parsed == (!document.Error() && document.RootElement()), "both parse the same");
    }
}

void Check(const std::string& text, TiXmlEncoding encoding) {
    const std::string padded = text + std::string(XML_PADDING_BYTES, '\0');
    TiXmlDocument document;
    const bool parsed = ParseXml(Bytes(text), encoding, document);
    XmlFault fault;
    Require(ParseXml(Bytes(text), encoding, document, &fault) == parsed, "asking why changes nothing");
    Require(parsed || !fault.reason.empty(), "there is a reason for every failure");
    const auto lines =
        std::count(text.begin(), text.end(), '\n') + std::count(text.begin(), text.end(), '\r');
    Require(fault.line >= 0 && fault.line <= lines + 1, "a line is one of the text");
    if (IsWithinXmlBounds(padded, encoding == TIXML_ENCODING_UTF8))
        CheckParser(padded, encoding, parsed);
    else
        Require(!parsed, "what is beyond the bounds is not parsed");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(View(data, size));
    TiXmlDocument document;
    const bool parsed = ParseXml(Bytes(text), TIXML_DEFAULT_ENCODING, document);
    Require(parsed == (document.RootElement() != nullptr), "what fails leaves nothing behind");
    if (text.empty() || text.find('\0') != std::string::npos) {
        Require(!parsed, "no text, no document");
        return 0;
    }
    for (const TiXmlEncoding encoding : {TIXML_ENCODING_UTF8, TIXML_ENCODING_LEGACY})
        Check(text, encoding);
    return 0;
}
