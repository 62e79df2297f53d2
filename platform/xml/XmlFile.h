// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The one door through which XML enters the program: read, bound, check, parse. Everything that comes in here
// may have been written by anyone.
#pragma once

#include "platform/files/CVardoFilePath.h"
#include "platform/text/CAtlString.h"
#include "platform/text/CAtlStringA.h"
#include "platform/xml/XmlBounds.h"

#include <tinyxml.h>
#include <string>
#include <vector>

// The largest text that is parsed, in bytes.
inline constexpr int MAX_XML_BYTES = 16 * 1024 * 1024;

// The file's bytes; empty when it cannot be read to its end, is not regular, or is larger than MAX_XML_BYTES.
CAtlStringA ReadFileBytes(const CVardoFilePath& file);

// Why a text was not parsed, or not to its end.
struct XmlFault {
    // From 1; 0 when the fault lies in no single line.
    int line = 0;
    // In English.
    std::string reason;
};

// Parses text, with white space condensed, into document, which is emptied first. False, with an empty
// document, when the text is malformed, holds a NUL byte or no element, or is beyond one of the bounds. The
// encoding is TinyXML's: TIXML_DEFAULT_ENCODING finds it from the text. Any thread, one document each.
//
// fault, unless null, gets the reason, or after a success what TinyXML left unread behind the root (no reason
// when it read all); then the document's elements and attributes know their rows. That takes longer; the
// result is the same.
bool ParseXml(const CAtlStringA& text, TiXmlEncoding encoding, TiXmlDocument& document,
              XmlFault* fault = nullptr);

// Calls ReadFileBytes and ParseXml; every line end (CR LF, CR) becomes LF first.
bool LoadXml(const CVardoFilePath& file, TiXmlDocument& document,
             TiXmlEncoding encoding = TIXML_ENCODING_UTF8, XmlFault* fault = nullptr);

// The same for bytes that were read before.
bool LoadXml(const CAtlStringA& bytes, TiXmlDocument& document, TiXmlEncoding encoding = TIXML_ENCODING_UTF8,
             XmlFault* fault = nullptr);

// The child elements of that name, or of any; empty without a parent.
std::vector<const TiXmlElement*> Children(const TiXmlElement* parent, const char* name = nullptr);

// An element's attribute, UTF-8 decoded; empty when the element lacks it.
CAtlString XmlAttribute(const TiXmlElement& element, const char* name);
