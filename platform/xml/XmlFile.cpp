// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/xml/XmlFile.h"

#include <QByteArray>
#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>

#include <strings.h>

#include "platform/files/FileSystem.h"

namespace {

constexpr const char* BYTE_ORDER_MARK = "\xEF\xBB\xBF";

// What TinyXML finds when it is told TIXML_ENCODING_UNKNOWN: UTF-8 by a byte order mark or by the declaration
// that the text begins with, single bytes otherwise.
TiXmlEncoding DetectedEncoding(const std::string& text) {
    if (text.starts_with(BYTE_ORDER_MARK))
        return TIXML_ENCODING_UTF8;
    const char* start = text.c_str();
    while (std::isspace(static_cast<unsigned char>(*start)))
        ++start;
    if (strncasecmp(start, "<?xml", 5) != 0)
        return TIXML_ENCODING_LEGACY;
    TiXmlDeclaration declaration;
    declaration.Parse(start, nullptr, TIXML_ENCODING_UNKNOWN);
    const char* name = declaration.Encoding();
    const bool utf8 = *name == 0 || strncasecmp(name, "UTF-8", 5) == 0 || strncasecmp(name, "UTF8", 4) == 0;
    return utf8 ? TIXML_ENCODING_UTF8 : TIXML_ENCODING_LEGACY;
}

// Every CR LF, and every other CR, becomes LF.
CAtlStringA WithNormalLineEnds(const CAtlStringA& text) {
    QByteArray normal(text.GetString(), text.GetLength());
    normal.replace("\r\n", "\n").replace('\r', '\n');
    return CAtlStringA(normal.constData(), static_cast<int>(normal.size()));
}

bool Refuse(XmlFault* fault, int line, const char* reason) {
    if (fault)
        *fault = {line, reason};
    return false;
}

int LineAt(std::string_view text, std::size_t position) {
    const auto before = text.substr(0, std::min(position, text.size()));
    return 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
}

// As IsWithinXmlBounds; the fault says where it stopped.
bool IsWithinBounds(const std::string& padded, bool utf8, XmlFault* fault) {
    std::size_t stop = 0;
    return IsWithinXmlBounds(padded, utf8, &stop) ||
           Refuse(fault, LineAt(padded, stop),
                  "an element or a declaration does not end, is malformed, or is beyond a bound");
}

}  // namespace

CAtlStringA ReadFileBytes(const CVardoFilePath& file) {
    off_t size = 0;
    const CFileDescriptor descriptor = FileSystem::OpenForReading(file.GetFilePathString(), size);
    CAtlStringA bytes;
    if (!descriptor.IsOpen() || size == 0 || size > MAX_XML_BYTES)
        return bytes;
    char* buffer = bytes.GetBuffer(static_cast<int>(size));
    const bool isWhole = FileSystem::ReadFully(descriptor, buffer, size) == size;
    bytes.ReleaseBuffer(isWhole ? static_cast<int>(size) : 0);
    return bytes;
}

bool ParseXml(const CAtlStringA& text, TiXmlEncoding encoding, TiXmlDocument& document, XmlFault* fault) {
    document.Clear();
    if (fault)
        *fault = {};
    if (text.IsEmpty() || text.GetLength() > MAX_XML_BYTES)
        return Refuse(fault, 0, "the file cannot be read, is empty, or is too large");
    // The parser takes a C string: it would silently ignore what follows a NUL byte.
    if (text.Find('\0') >= 0)
        return Refuse(fault, 0, "the file holds a NUL byte, as one in UTF-16 does");
    std::string padded(text.begin(), text.end());
    padded.append(XML_PADDING_BYTES, '\0');
    if (encoding == TIXML_ENCODING_UNKNOWN) {
        // DetectedEncoding reads the declaration as single bytes, and relies on its end.
        if (!IsWithinBounds(padded, false, fault))
            return false;
        encoding = DetectedEncoding(padded);
    }
    if (!IsWithinBounds(padded, encoding == TIXML_ENCODING_UTF8, fault))
        return false;
    // Without tab stops the parser skips the count of rows, which walks over the text once more.
    document.SetTabSize(fault ? 1 : 0);
    const char* rest = document.Parse(padded.c_str(), nullptr, encoding);
    if (!document.Error() && document.RootElement()) {
        if (rest && *rest != '\0')
            Refuse(fault, LineAt(padded, static_cast<std::size_t>(rest - padded.c_str())),
                   "from here on the file is not read");
        return true;
    }
    Refuse(fault, document.Error() ? document.ErrorRow() : 0,
           document.Error() ? document.ErrorDesc() : "the file holds no element");
    document.Clear();
    return false;
}

bool LoadXml(const CVardoFilePath& file, TiXmlDocument& document, TiXmlEncoding encoding, XmlFault* fault) {
    return LoadXml(ReadFileBytes(file), document, encoding, fault);
}

bool LoadXml(const CAtlStringA& bytes, TiXmlDocument& document, TiXmlEncoding encoding, XmlFault* fault) {
    return ParseXml(WithNormalLineEnds(bytes), encoding, document, fault);
}

std::vector<const TiXmlElement*> Children(const TiXmlElement* parent, const char* name) {
    std::vector<const TiXmlElement*> children;
    const TiXmlElement* child = parent ? parent->FirstChildElement() : nullptr;
    for (; child; child = child->NextSiblingElement())
        if (!name || child->ValueStr() == name)
            children.push_back(child);
    return children;
}

CAtlString XmlAttribute(const TiXmlElement& element, const char* name) {
    return CAtlString(element.Attribute(name));
}
