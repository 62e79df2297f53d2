// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The look at an XML text before TinyXML sees it.
#pragma once

#include <cstddef>
#include <string>

// The deepest nesting of elements; TinyXML uses the stack for each level and has no bound of its own.
inline constexpr int MAX_XML_DEPTH = 200;
// The most attributes of one element; TinyXML's time grows with their square.
inline constexpr int MAX_XML_ATTRIBUTES = 1000;
// The longest value of an attribute as it is written, in bytes: programs keep values, and of each product
// several. Addresses of 8,000 bytes should work (RFC 9110, 4.1).
inline constexpr int MAX_XML_VALUE = 8192;
// The most elements, attributes, comments and pieces of text together; each takes up to 300 bytes.
inline constexpr int MAX_XML_ITEMS = 500000;

// NUL bytes that a text needs behind its end, its own terminator not counted: at the end of a truncated text
// TinyXML 2.6.2 steps over the rest of a UTF-8 sequence without looking, which may take it past the
// terminator.
inline constexpr int XML_PADDING_BYTES = 4;

// Whether TinyXML can parse the text with bounded stack, time and memory: nesting, attributes of one element,
// values and items as a whole stay within maxDepth, MAX_XML_ATTRIBUTES, MAX_XML_VALUE and MAX_XML_ITEMS. Also
// false for a text that ends inside an element or a declaration. One pass, no recursion; what it does not
// look at (names of closing tags, doubled attributes) is left to the parser.
//
// paddedText is 0-terminated and padded with XML_PADDING_BYTES; utf8 says whether TinyXML will be told
// TIXML_ENCODING_UTF8: then it takes up to three bytes after a lead byte as part of its character, even
// quotes and brackets.
//
// stop, unless null, becomes the number of bytes looked at.
bool IsWithinXmlBounds(const std::string& paddedText, bool utf8, std::size_t* stop = nullptr,
                       int maxDepth = MAX_XML_DEPTH);
