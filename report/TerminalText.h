// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What a terminal makes of a text.
#pragma once

#include <QString>

// The places that the text takes, as of wcwidth(3) in UTF-8, whatever the locale.
int TerminalWidth(const QString& text);
// The text with a replacement for each character that a terminal would not show.
QString Printable(const QString& text);
