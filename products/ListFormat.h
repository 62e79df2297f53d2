// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The names of the product list, and of the elements of the three kinds of products in it.
#pragma once

#include "platform/XmlRules.h"

namespace ListFormat {

inline constexpr XmlAttributeRule VERSION{"Version", XmlValue::VERSION};
inline constexpr XmlAttributeRule URL{"Url", XmlValue::ADDRESS};
inline constexpr XmlAttributeRule ROOT[] = {VERSION, URL};

inline constexpr const char* PRODUCT = "Product";
inline constexpr XmlAttributeRule NAME{"Name", XmlValue::TEXT, true};
inline constexpr XmlAttributeRule BASE_XML{"BaseXml", XmlValue::TEXT, true};
inline constexpr XmlAttributeRule DEFAULT_PAGE{"DefaultUrl", XmlValue::PAGE};
inline constexpr XmlAttributeRule PRODUCT_ATTRIBUTES[] = {NAME, BASE_XML, DEFAULT_PAGE};

inline constexpr const char* DISABLERS = "DisableUpdatesIfInstalled";
inline constexpr const char* DISABLER = "Disabler";
inline constexpr XmlAttributeRule DISABLER_UID{"uid", XmlValue::TEXT, true};
inline constexpr XmlAttributeRule DISABLER_FROM{"versionFrom", XmlValue::VERSION};
inline constexpr XmlAttributeRule DISABLER_TO{"versionTo", XmlValue::VERSION};
inline constexpr XmlAttributeRule DISABLER_ATTRIBUTES[] = {DISABLER_UID, DISABLER_FROM, DISABLER_TO};

inline constexpr const char* GALLERY = "Gallery";
inline constexpr XmlAttributeRule GUID{"GUID", XmlValue::TEXT, true};
inline constexpr XmlAttributeRule GALLERY_FOLDER{"DefaultUrl", XmlValue::ADDRESS, true};
inline constexpr XmlAttributeRule GALLERY_ATTRIBUTES[] = {NAME, GUID, GALLERY_FOLDER};

inline constexpr const char* NOTIFICATION = "Notification";
// Names the setting that remembers the dismissal.
inline constexpr XmlAttributeRule NOTIFICATION_NAME{"Name"};
inline constexpr XmlAttributeRule NOTIFICATION_BASE{"BaseXML", XmlValue::TEXT, true};
inline constexpr XmlAttributeRule NOTIFICATION_ATTRIBUTES[] = {NOTIFICATION_NAME, NOTIFICATION_BASE};

inline constexpr XmlElementRule DISABLER_CHILDREN[] = {{DISABLER, DISABLER_ATTRIBUTES, {}}};
inline constexpr XmlElementRule PRODUCT_CHILDREN[] = {{DISABLERS, {}, DISABLER_CHILDREN, true}};
inline constexpr XmlElementRule LIST_CHILDREN[] = {{PRODUCT, PRODUCT_ATTRIBUTES, PRODUCT_CHILDREN},
                                                   {GALLERY, GALLERY_ATTRIBUTES, {}},
                                                   {NOTIFICATION, NOTIFICATION_ATTRIBUTES, {}}};
inline constexpr XmlElementRule LIST{nullptr, ROOT, LIST_CHILDREN};

}  // namespace ListFormat
