// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The names of a notification's description and of its message.
#pragma once

namespace NotificationFormat {

// The root of both files.
inline constexpr const char* NOTIFICATION = "Notification";

inline constexpr const char* MESSAGE_FOLDER = "URL";
inline constexpr const char* MESSAGE_FILE = "File";

inline constexpr const char* WEB_PAGE = "WebPage";
inline constexpr const char* START_DATE = "StartDate";
inline constexpr const char* STOP_DATE = "StopDate";

// Holds one element per language, named by the language's code.
inline constexpr const char* TEXTS = "Text";
inline constexpr const char* TEXT_VALUE = "value";

}  // namespace NotificationFormat
