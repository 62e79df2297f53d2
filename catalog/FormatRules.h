// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the maker may write into each kind of file, by the names that the readers go by.
#pragma once

#include "catalog/XmlRules.h"
#include "i18n/LanguageTable.h"
#include "products/DescriptionFormat.h"
#include "products/GalleryFormat.h"
#include "products/ListFormat.h"
#include "products/NotificationFormat.h"

// Local and remote descriptions.
namespace DescriptionRules {

using namespace DescriptionFormat;

inline constexpr XmlAttributeRule ROOT[] = {{LOCATION}};
inline constexpr XmlAttributeRule INSTALLED[] = {{CURRENT_VERSION, XmlValue::VERSION, true},
                                                 {REMOTE_FILE, XmlValue::KEY, true},
                                                 {REMOTE_FOLDER, XmlValue::ADDRESS, true},
                                                 {NO_UPDATES}};
inline constexpr XmlElementRule LOCAL_CHILDREN[] = {{PRODUCT, INSTALLED, {}, true}};
inline constexpr XmlElementRule LOCAL{nullptr, ROOT, LOCAL_CHILDREN};

inline constexpr XmlAttributeRule OFFER[] = {
    {UPDATE_VERSION, XmlValue::VERSION}, {INSTALL_FILE, XmlValue::KEY},
    {INSTALL_FOLDER, XmlValue::KEY},     {INSTALL_SIZE},
    {WEB_PAGE, XmlValue::PAGE},          {ARGUMENT}};
inline constexpr XmlAttributeRule ENDS[] = {{VERSION_FROM, XmlValue::VERSION},
                                            {VERSION_TO, XmlValue::VERSION}};
inline constexpr XmlElementRule RANGE_CHILDREN[] = {{PRODUCT, OFFER, {}, true},
                                                    {TEST_PRODUCT, OFFER, {}, true}};
inline constexpr XmlElementRule RANGES[] = {{RANGE, ENDS, RANGE_CHILDREN}};
inline constexpr XmlElementRule OFFER_CHILDREN[] = {{COMPATIBILITY, {}, RANGES, true}};
inline constexpr XmlElementRule REMOTE_CHILDREN[] = {{PRODUCT, OFFER, OFFER_CHILDREN, true},
                                                     {TEST_PRODUCT, OFFER, OFFER_CHILDREN, true}};
inline constexpr XmlElementRule REMOTE{nullptr, ROOT, REMOTE_CHILDREN};

}  // namespace DescriptionRules

// Product lists.
namespace ListRules {

using namespace ListFormat;

inline constexpr XmlAttributeRule ROOT[] = {{VERSION, XmlValue::VERSION}, {URL, XmlValue::ADDRESS}};
inline constexpr XmlAttributeRule PRODUCT_ATTRIBUTES[] = {
    {NAME, XmlValue::KEY, true}, {BASE_XML, XmlValue::KEY, true}, {DEFAULT_PAGE, XmlValue::PAGE}};
inline constexpr XmlAttributeRule DISABLER_ATTRIBUTES[] = {{DISABLER_UID, XmlValue::KEY, true},
                                                           {DISABLER_FROM, XmlValue::VERSION},
                                                           {DISABLER_TO, XmlValue::VERSION}};
inline constexpr XmlAttributeRule GALLERY_ATTRIBUTES[] = {
    {NAME, XmlValue::KEY, true}, {GUID, XmlValue::KEY, true}, {GALLERY_FOLDER, XmlValue::ADDRESS, true}};
inline constexpr XmlAttributeRule NOTIFICATION_ATTRIBUTES[] = {{NOTIFICATION_NAME, XmlValue::KEY},
                                                               {NOTIFICATION_BASE, XmlValue::KEY, true}};
inline constexpr XmlElementRule DISABLER_CHILDREN[] = {{DISABLER, DISABLER_ATTRIBUTES, {}}};
inline constexpr XmlElementRule PRODUCT_CHILDREN[] = {{DISABLERS, {}, DISABLER_CHILDREN, true}};
inline constexpr XmlElementRule LIST_CHILDREN[] = {{PRODUCT, PRODUCT_ATTRIBUTES, PRODUCT_CHILDREN},
                                                   {GALLERY, GALLERY_ATTRIBUTES, {}},
                                                   {NOTIFICATION, NOTIFICATION_ATTRIBUTES, {}}};
inline constexpr XmlElementRule LIST{nullptr, ROOT, LIST_CHILDREN};

}  // namespace ListRules

// Descriptions and messages of notifications.
namespace NotificationRules {

using namespace NotificationFormat;

inline constexpr XmlAttributeRule DESCRIPTION_ATTRIBUTES[] = {{MESSAGE_FOLDER, XmlValue::ADDRESS, true},
                                                              {MESSAGE_FILE, XmlValue::KEY, true}};
inline constexpr XmlElementRule DESCRIPTION{NOTIFICATION, DESCRIPTION_ATTRIBUTES, {}};

inline constexpr XmlAttributeRule MESSAGE_ATTRIBUTES[] = {
    {WEB_PAGE, XmlValue::PAGE, true}, {START_DATE, XmlValue::DATE, true}, {STOP_DATE, XmlValue::DATE, true}};
inline constexpr XmlAttributeRule TEXT_ATTRIBUTES[] = {{TEXT_VALUE}};
inline constexpr XmlElementRule TEXTS_CHILDREN[] = {{nullptr, TEXT_ATTRIBUTES, {}}};
inline constexpr XmlElementRule MESSAGE_CHILDREN[] = {{TEXTS, {}, TEXTS_CHILDREN, true}};
inline constexpr XmlElementRule MESSAGE{NOTIFICATION, MESSAGE_ATTRIBUTES, MESSAGE_CHILDREN};

}  // namespace NotificationRules

// Lists of installed and of published gallery categories.
namespace GalleryRules {

using namespace GalleryFormat;

inline constexpr XmlAttributeRule CATEGORY_ATTRIBUTES[] = {{ID, XmlValue::KEY, true}, {VERSION}};
inline constexpr XmlElementRule INSTALLED_CHILDREN[] = {{CATEGORY, CATEGORY_ATTRIBUTES, {}}};
inline constexpr XmlElementRule INSTALLED{nullptr, {}, INSTALLED_CHILDREN};
inline constexpr XmlElementRule PUBLISHED_CHILDREN[] = {{CATEGORIES, {}, INSTALLED_CHILDREN, true}};
inline constexpr XmlElementRule PUBLISHED{nullptr, {}, PUBLISHED_CHILDREN};

}  // namespace GalleryRules

// Language tables.
namespace LanguageRules {

using namespace LanguageFormat;

inline constexpr XmlAttributeRule LANGUAGE[] = {
    {ID, XmlValue::KEY, true}, {CODE, XmlValue::KEY, true}, {NATIVE_NAME}, {RIGHT_TO_LEFT}};
inline constexpr XmlElementRule TABLE_CHILDREN[] = {{nullptr, LANGUAGE, {}}};
inline constexpr XmlElementRule TABLE{nullptr, {}, TABLE_CHILDREN};

}  // namespace LanguageRules
