// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Keeps tool tips and the small print of message boxes from carrying out markup in plain text.
#pragma once

#include <QString>
#include <QTextDocument>

// HTML that shows the text as it is; empty for an empty text.
inline QString AsHtml(const QString& text) {
    return text.isEmpty() ? QString() : Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal);
}
