// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Texts as they may be printed.
#pragma once

#include "platform/text/CAtlString.h"

#include <QString>

// The places that the text takes, as of wcwidth(3) in UTF-8, whatever the locale.
int TerminalWidth(const QString& text);
// The text with a replacement for each character that a terminal would not show.
QString Printable(const QString& text);

// The address without the password that it may hold (RFC 3986, 3.2.1); else as it is.
QString WithoutPassword(const CAtlString& address);
