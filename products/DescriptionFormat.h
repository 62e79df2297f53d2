// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The names of local and remote update descriptions.
#pragma once

namespace DescriptionFormat {

// The program's own description, locally; on the web by custom too.
inline constexpr const wchar_t* OWN_FILE = L"VardoProductUpdate.xml";

inline constexpr const char* PRODUCT = "Product";
inline constexpr const char* TEST_PRODUCT = "TestProduct";

inline constexpr const char* LOCATION = "Location";
inline constexpr const wchar_t* LOCATION_SERVER = L"Server";

inline constexpr const char* CURRENT_VERSION = "CurrentVersion";
inline constexpr const char* REMOTE_FILE = "RemoteVersionFile";
inline constexpr const char* REMOTE_FOLDER = "RemoteVersionFileURL";
inline constexpr const char* NO_UPDATES = "NoUpdates";

inline constexpr const char* UPDATE_VERSION = "UpdateVersion";
inline constexpr const char* INSTALL_FILE = "UpdateInstallFile";
inline constexpr const char* INSTALL_FOLDER = "UpdateInstallURL";
inline constexpr const char* INSTALL_SIZE = "UpdateInstallSize";
inline constexpr const char* WEB_PAGE = "UpdateWebPage";
inline constexpr const char* ARGUMENT = "UpdateArgument";

inline constexpr const char* COMPATIBILITY = "Compatibility";
inline constexpr const char* RANGE = "Range";
inline constexpr const char* VERSION_FROM = "VersionFrom";
inline constexpr const char* VERSION_TO = "VersionTo";

}  // namespace DescriptionFormat
