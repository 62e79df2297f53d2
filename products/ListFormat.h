// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The names of the product list, and of the elements of the three kinds of products in it.
#pragma once

namespace ListFormat {

inline constexpr const char* VERSION = "Version";
inline constexpr const char* URL = "Url";

inline constexpr const char* PRODUCT = "Product";
inline constexpr const char* NAME = "Name";
inline constexpr const char* BASE_XML = "BaseXml";
inline constexpr const char* DEFAULT_PAGE = "DefaultUrl";

inline constexpr const char* DISABLERS = "DisableUpdatesIfInstalled";
inline constexpr const char* DISABLER = "Disabler";
inline constexpr const char* DISABLER_UID = "uid";
inline constexpr const char* DISABLER_FROM = "versionFrom";
inline constexpr const char* DISABLER_TO = "versionTo";

inline constexpr const char* GALLERY = "Gallery";
inline constexpr const char* GUID = "GUID";
inline constexpr const char* GALLERY_FOLDER = "DefaultUrl";

inline constexpr const char* NOTIFICATION = "Notification";
// Names the setting that remembers the dismissal.
inline constexpr const char* NOTIFICATION_NAME = "Name";
inline constexpr const char* NOTIFICATION_BASE = "BaseXML";

}  // namespace ListFormat
