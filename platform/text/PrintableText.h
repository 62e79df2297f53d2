// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Texts that come from outside, as they may be shown and printed.
#pragma once

#include "platform/text/CAtlString.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QString>
#include <string>

// The most UTF-16 code units of a text that are shown.
inline constexpr qsizetype LONGEST_SHOWN = 500;

// The text, cut to longest UTF-16 code units, the last of them an ellipsis, when it has more.
QString Cut(const QString& text, qsizetype longest = LONGEST_SHOWN);

// The text with U+FFFD for each character that would not show itself: control characters, line ends, and
// those that hide or reorder others (the categories Cc, Cf without the joiners, Zl, Zp and Cs of Unicode).
QString Printable(const QString& text);

// The document in UTF-8, with such characters as escapes (RFC 8259, 7).
QByteArray PrintableJson(const QJsonDocument& document);

// The first LONGEST_SHOWN characters, each narrowed to its low 8 bits, with "?" for control characters.
std::string PrintableNarrow(const CAtlString& text);
