// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Texts that come from outside, as they may be shown and printed.
#pragma once

#include "platform/text/CAtlString.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QString>
#include <string>

// The most UTF-16 code units that are shown of a text.
inline constexpr qsizetype LONGEST_SHOWN = 500;

// The text; when it has more than so many UTF-16 code units, its beginning and an ellipsis, within that
// length.
QString Cut(const QString& text, qsizetype longest = LONGEST_SHOWN);

// The text with U+FFFD for each character that would not show itself: control characters, line ends, and
// those that hide or reorder others (the categories Cc, Cf without the joiners, Zl, Zp and Cs of Unicode).
QString Printable(const QString& text);

// The document in UTF-8, with such characters as escapes (RFC 8259, 7).
QByteArray PrintableJson(const QJsonDocument& document);

// Each character narrowed to its low 8 bits, cut, with "?" for what is a control character then.
std::string PrintableNarrow(const CAtlString& text);
