// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/text/PrintableText.h"

#include <algorithm>

#include "platform/text/CAtlStringA.h"

namespace {

constexpr char32_t ZERO_WIDTH_NON_JOINER = 0x200C;
constexpr char32_t ZERO_WIDTH_JOINER = 0x200D;

bool ShowsItself(char32_t ch) {
    switch (QChar::category(ch)) {
        case QChar::Other_Control:
        case QChar::Other_Surrogate:
        case QChar::Separator_Line:
        case QChar::Separator_Paragraph:
            return false;
        case QChar::Other_Format:
            return ch == ZERO_WIDTH_JOINER || ch == ZERO_WIDTH_NON_JOINER;
        default:
            return true;
    }
}

bool IsNarrowControl(char ch) {
    const auto byte = static_cast<unsigned char>(ch);
    return byte < 0x20 || (byte >= 0x7F && byte < 0xA0);
}

// Escapes each UTF-16 code unit, as JSON does.
QString JsonEscape(char32_t ch) {
    QString escape;
    for (const QChar unit : QString::fromUcs4(&ch, 1))
        escape += QString("\\u%1").arg(unit.unicode(), 4, 16, QLatin1Char('0'));
    return escape;
}

}  // namespace

QString Cut(const QString& text, qsizetype longest) {
    if (text.size() <= longest)
        return text;
    // Does not cut between the halves of a character.
    const qsizetype room = longest - 1;
    return text.left(text[room - 1].isHighSurrogate() ? room - 1 : room) + QChar(0x2026);
}

QString Printable(const QString& text) {
    QString printable;
    for (const char32_t ch : text.toUcs4())
        printable += ShowsItself(ch) ? QString::fromUcs4(&ch, 1) : QString(QChar::ReplacementCharacter);
    return printable;
}

QByteArray PrintableJson(const QJsonDocument& document) {
    QString printable;
    for (const char32_t ch : QString::fromUtf8(document.toJson()).toUcs4())
        // Line feeds stand between the values only.
        printable += ch == U'\n' || ShowsItself(ch) ? QString::fromUcs4(&ch, 1) : JsonEscape(ch);
    return printable.toUtf8();
}

std::string PrintableNarrow(const CAtlString& text) {
    const CAtlStringA bytes(text.Left(static_cast<int>(LONGEST_SHOWN)));
    std::string narrow(bytes.begin(), bytes.end());
    std::replace_if(narrow.begin(), narrow.end(), IsNarrowControl, '?');
    return narrow;
}
