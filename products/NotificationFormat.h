// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The names of a notification's description and of its message.
#pragma once

#include "platform/XmlRules.h"

namespace NotificationFormat {

// The root of both files.
inline constexpr const char* NOTIFICATION = "Notification";

inline constexpr XmlAttributeRule MESSAGE_FOLDER{"URL", XmlValue::ADDRESS, true};
inline constexpr XmlAttributeRule MESSAGE_FILE{"File", XmlValue::TEXT, true};
inline constexpr XmlAttributeRule DESCRIPTION_ATTRIBUTES[] = {MESSAGE_FOLDER, MESSAGE_FILE};
inline constexpr XmlElementRule DESCRIPTION{NOTIFICATION, DESCRIPTION_ATTRIBUTES, {}};

inline constexpr XmlAttributeRule WEB_PAGE{"WebPage", XmlValue::PAGE, true};
inline constexpr XmlAttributeRule START_DATE{"StartDate", XmlValue::DATE, true};
inline constexpr XmlAttributeRule STOP_DATE{"StopDate", XmlValue::DATE, true};
inline constexpr XmlAttributeRule MESSAGE_ATTRIBUTES[] = {WEB_PAGE, START_DATE, STOP_DATE};

// Holds one element per language, named by the language's code.
inline constexpr const char* TEXTS = "Text";
inline constexpr XmlAttributeRule TEXT_VALUE{"value"};
inline constexpr XmlAttributeRule TEXT_ATTRIBUTES[] = {TEXT_VALUE};
inline constexpr XmlElementRule TEXTS_CHILDREN[] = {{nullptr, TEXT_ATTRIBUTES, {}}};
inline constexpr XmlElementRule MESSAGE_CHILDREN[] = {{TEXTS, {}, TEXTS_CHILDREN, true}};
inline constexpr XmlElementRule MESSAGE{NOTIFICATION, MESSAGE_ATTRIBUTES, MESSAGE_CHILDREN};

}  // namespace NotificationFormat
