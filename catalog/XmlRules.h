// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What may stand in a kind of XML file, as tables.
#pragma once

#include <span>

// What a value is read as.
enum class XmlValue {
    TEXT,
    // Compared, or looked for: a blank at an end is part of it.
    KEY,
    VERSION,
    // "yyyyMMdd".
    DATE,
    // Fetched by the program itself, alone or as the folder of a file.
    ADDRESS,
    // Opened in the user's browser.
    PAGE,
};

struct XmlAttributeRule {
    const char* name = nullptr;
    XmlValue value = XmlValue::TEXT;
    // Without it, or when it is empty, its element is of no use.
    bool isNeeded = false;
};

struct XmlElementRule {
    // Null matches any name.
    const char* name = nullptr;
    std::span<const XmlAttributeRule> attributes;
    std::span<const XmlElementRule> children;
    // Of several with this name in one parent only the first is read.
    bool isOnlyFirst = false;
};
