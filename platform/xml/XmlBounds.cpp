// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/xml/XmlBounds.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace {

// Walks over a text exactly as TinyXML 2.6.2 does (TiXmlNode::Identify and the Parse functions of the nodes),
// for as long as TinyXML would go on. If it saw an element's end or a quote that the parser does not see, it
// would miss depth; so every function here has its model there.
class CXmlScan {
public:
    CXmlScan(const std::string& text, bool utf8, int maxDepth)
        : at_(text.c_str()), end_(at_ + text.size()), utf8_(utf8), maxDepth_(maxDepth) {}

    bool Run() {
        for (SkipSpace(); *at_ && items_ <= MAX_XML_ITEMS; SkipSpace())
            if (depth_ > 0 && StartsWith("</")) {
                SkipPast(">");
                --depth_;
            } else if (*at_ == '<') {
                ++items_;
                if (!Markup())
                    return false;
            } else if (depth_ > 0) {
                ++items_;
                if (!SkipTextUntil('<'))
                    return false;
            } else {
                // Outside of the elements the parser ends at the first text.
                return true;
            }
        return depth_ == 0 && items_ <= MAX_XML_ITEMS;
    }

    std::size_t Position(const std::string& text) const {
        return static_cast<std::size_t>(at_ - text.c_str());
    }

private:
    bool Markup() {
        if (StartsWithAnyCase("<?xml"))
            return Declaration();
        if (StartsWith("<!--"))
            return SkipPast("-->", 4);
        if (StartsWith("<![CDATA["))
            return SkipPast("]]>", 9);
        return IsNameStart(at_[1]) ? Element() : SkipPast(">");
    }

    bool Declaration() {
        at_ += 5;
        while (*at_ && *at_ != '>') {
            SkipSpace();
            const bool known = StartsWithAnyCase("version") || StartsWithAnyCase("encoding") ||
                               StartsWithAnyCase("standalone");
            if (known && !Attribute())
                return false;
            while (!known && *at_ && *at_ != '>' && !IsSpace(*at_))
                ++at_;
        }
        return *at_++ == '>';
    }

    bool Element() {
        ++at_;
        SkipSpace();
        if (!SkipName() || depth_ == maxDepth_)
            return false;
        for (int attributes = 0;; ++attributes) {
            SkipSpace();
            if (*at_ == '>') {
                ++at_;
                ++depth_;
                return true;
            }
            if (*at_ == '/')
                return *++at_ == '>' && *at_++;
            if (attributes == MAX_XML_ATTRIBUTES || !Attribute())
                return false;
        }
    }

    // Skips a name, "=" and a value with or without quotes; false when it is malformed or ends the text.
    bool Attribute() {
        ++items_;
        if (!SkipName())
            return false;
        SkipSpace();
        if (*at_ != '=')
            return false;
        ++at_;
        SkipSpace();
        const char* value = at_;
        return SkipValue() && at_ - value <= MAX_XML_VALUE;
    }

    bool SkipValue() {
        if (*at_ == '"' || *at_ == '\'') {
            const char quote = *at_++;
            return SkipTextUntil(quote) && *at_ && *++at_;
        }
        while (*at_ && !IsSpace(*at_) && *at_ != '/' && *at_ != '>')
            if (*at_++ == '"' || at_[-1] == '\'')
                return false;
        return *at_ != 0;
    }

    bool SkipName() {
        if (!IsNameStart(*at_))
            return false;
        while (IsNameStart(*at_) || std::isdigit(Unsigned(*at_)) || *at_ == '-' || *at_ == '.' || *at_ == ':')
            ++at_;
        return true;
    }

    // Always true: the parser judges a text that ends first.
    bool SkipPast(std::string_view end, int from = 0) {
        at_ += from;
        const std::size_t found = Rest().find(end);
        at_ = found == std::string_view::npos ? end_ : at_ + found + end.size();
        return true;
    }

    bool SkipTextUntil(char end) {
        while (*at_ && *at_ != end)
            if (!StartsWith("&#"))
                at_ += utf8_ ? CharacterBytes(Unsigned(*at_)) : 1;
            else if (!SkipNumericEntity())
                return false;
        return true;
    }

    // The parser reads from the next ";" back to the nearest "#" or "x", past quotes and brackets.
    bool SkipNumericEntity() {
        const bool hexadecimal = at_[2] == 'x';
        at_ += hexadecimal ? 3 : 2;
        const char* first = at_;
        while (hexadecimal ? std::isxdigit(Unsigned(*at_)) : std::isdigit(Unsigned(*at_)))
            ++at_;
        return at_ > first && *at_++ == ';';
    }

    void SkipSpace() {
        while (*at_)
            if (IsSpace(*at_))
                ++at_;
            else if (utf8_ &&
                     (StartsWith("\xEF\xBB\xBF") || StartsWith("\xEF\xBF\xBE") || StartsWith("\xEF\xBF\xBF")))
                at_ += 3;
            else
                return;
    }

    std::string_view Rest() const { return {at_, static_cast<std::size_t>(end_ - at_)}; }
    bool StartsWith(std::string_view what) const { return Rest().starts_with(what); }
    bool StartsWithAnyCase(std::string_view lowerCase) const {
        return std::equal(lowerCase.begin(), lowerCase.end(), at_,
                          at_ + std::min(lowerCase.size(), Rest().size()),
                          [](char a, char b) { return a == std::tolower(Unsigned(b)); });
    }
    static unsigned char Unsigned(char byte) { return static_cast<unsigned char>(byte); }
    static bool IsSpace(char byte) { return std::isspace(Unsigned(byte)) != 0; }
    static bool IsNameStart(char byte) {
        return Unsigned(byte) >= 127 || std::isalpha(Unsigned(byte)) || byte == '_';
    }
    // The parser's table, which goes by the lead byte alone.
    static int CharacterBytes(unsigned char lead) {
        if (lead < 0xC2 || lead > 0xF4)
            return 1;
        if (lead < 0xE0)
            return 2;
        return lead < 0xF0 ? 3 : 4;
    }

    const char* at_;
    const char* end_;
    bool utf8_;
    int maxDepth_;
    int depth_ = 0;
    int items_ = 0;
};

}  // namespace

bool IsWithinXmlBounds(const std::string& paddedText, bool utf8, std::size_t* stop, int maxDepth) {
    CXmlScan scan(paddedText, utf8, maxDepth);
    const bool isWithin = scan.Run();
    if (stop)
        *stop = scan.Position(paddedText);
    return isWithin;
}
