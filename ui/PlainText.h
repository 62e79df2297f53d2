// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Shows texts of others as they are, in texts of the program.
#pragma once

#include <QGuiApplication>
#include <QString>
#include <QTextDocument>

// HTML that shows the text in the program's direction, without carrying out markup in it; empty for an empty
// text.
inline QString AsHtml(const QString& text) {
    if (text.isEmpty())
        return {};
    const QString direction = QGuiApplication::isRightToLeft() ? "rtl" : "ltr";
    return "<div dir=\"" + direction + "\">" + Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) +
           "</div>";
}

// The text, isolated (U+2068, U+2069): its letters from right to left, or a number and its unit, keep their
// order and that of the text around it.
inline QString Isolated(const QString& text) {
    return QChar(0x2068) + text + QChar(0x2069);
}
