// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The names of local and remote update descriptions.
#pragma once

#include "platform/XmlRules.h"

namespace DescriptionFormat {

// The program's own description, locally; on the web by custom too.
inline constexpr const wchar_t* OWN_FILE = L"VardoProductUpdate.xml";

inline constexpr const char* PRODUCT = "Product";
inline constexpr const char* TEST_PRODUCT = "TestProduct";

inline constexpr XmlAttributeRule LOCATION{"Location"};
inline constexpr const wchar_t* LOCATION_SERVER = L"Server";
inline constexpr XmlAttributeRule ROOT[] = {LOCATION};

inline constexpr XmlAttributeRule CURRENT_VERSION{"CurrentVersion", XmlValue::VERSION, true};
inline constexpr XmlAttributeRule REMOTE_FILE{"RemoteVersionFile", XmlValue::TEXT, true};
inline constexpr XmlAttributeRule REMOTE_FOLDER{"RemoteVersionFileURL", XmlValue::ADDRESS, true};
inline constexpr XmlAttributeRule NO_UPDATES{"NoUpdates"};
inline constexpr XmlAttributeRule INSTALLED[] = {CURRENT_VERSION, REMOTE_FILE, REMOTE_FOLDER, NO_UPDATES};

inline constexpr XmlElementRule LOCAL_CHILDREN[] = {{PRODUCT, INSTALLED, {}, true}};
inline constexpr XmlElementRule LOCAL{nullptr, ROOT, LOCAL_CHILDREN};

inline constexpr XmlAttributeRule UPDATE_VERSION{"UpdateVersion", XmlValue::VERSION};
inline constexpr XmlAttributeRule INSTALL_FILE{"UpdateInstallFile"};
inline constexpr XmlAttributeRule INSTALL_FOLDER{"UpdateInstallURL"};
inline constexpr XmlAttributeRule INSTALL_SIZE{"UpdateInstallSize"};
inline constexpr XmlAttributeRule WEB_PAGE{"UpdateWebPage", XmlValue::PAGE};
inline constexpr XmlAttributeRule ARGUMENT{"UpdateArgument"};
inline constexpr XmlAttributeRule OFFER[] = {UPDATE_VERSION, INSTALL_FILE, INSTALL_FOLDER,
                                             INSTALL_SIZE,   WEB_PAGE,     ARGUMENT};

inline constexpr const char* COMPATIBILITY = "Compatibility";
inline constexpr const char* RANGE = "Range";
inline constexpr XmlAttributeRule VERSION_FROM{"VersionFrom", XmlValue::VERSION};
inline constexpr XmlAttributeRule VERSION_TO{"VersionTo", XmlValue::VERSION};
inline constexpr XmlAttributeRule ENDS[] = {VERSION_FROM, VERSION_TO};

inline constexpr XmlElementRule RANGE_CHILDREN[] = {{PRODUCT, OFFER, {}, true},
                                                    {TEST_PRODUCT, OFFER, {}, true}};
inline constexpr XmlElementRule RANGES[] = {{RANGE, ENDS, RANGE_CHILDREN}};
inline constexpr XmlElementRule OFFER_CHILDREN[] = {{COMPATIBILITY, {}, RANGES, true}};
inline constexpr XmlElementRule REMOTE_CHILDREN[] = {{PRODUCT, OFFER, OFFER_CHILDREN, true},
                                                     {TEST_PRODUCT, OFFER, OFFER_CHILDREN, true}};
inline constexpr XmlElementRule REMOTE{nullptr, ROOT, REMOTE_CHILDREN};

}  // namespace DescriptionFormat
