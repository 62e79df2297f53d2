// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The names of the lists of installed and of published gallery categories.
#pragma once

#include "platform/XmlRules.h"

namespace GalleryFormat {

inline constexpr const wchar_t* INSTALLED_FILE = L"updateinfo";
inline constexpr const wchar_t* PUBLISHED_FILE = L"gallery_categories.xml";

inline constexpr const char* CATEGORIES = "categories";
inline constexpr const char* CATEGORY = "category";
inline constexpr XmlAttributeRule ID{"id", XmlValue::TEXT, true};
inline constexpr XmlAttributeRule VERSION{"version"};
inline constexpr XmlAttributeRule CATEGORY_ATTRIBUTES[] = {ID, VERSION};

inline constexpr XmlElementRule INSTALLED_CHILDREN[] = {{CATEGORY, CATEGORY_ATTRIBUTES, {}}};
inline constexpr XmlElementRule INSTALLED{nullptr, {}, INSTALLED_CHILDREN};
inline constexpr XmlElementRule PUBLISHED_CHILDREN[] = {{CATEGORIES, {}, INSTALLED_CHILDREN, true}};
inline constexpr XmlElementRule PUBLISHED{nullptr, {}, PUBLISHED_CHILDREN};

}  // namespace GalleryFormat
