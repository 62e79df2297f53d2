// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The names of the lists of installed and of published gallery categories.
#pragma once

namespace GalleryFormat {

inline constexpr const wchar_t* INSTALLED_FILE = L"updateinfo";
inline constexpr const wchar_t* PUBLISHED_FILE = L"gallery_categories.xml";

inline constexpr const char* CATEGORIES = "categories";
inline constexpr const char* CATEGORY = "category";
inline constexpr const char* ID = "id";
inline constexpr const char* VERSION = "version";

}  // namespace GalleryFormat
