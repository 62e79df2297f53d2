// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/PrintableText.h"

#include <QList>
#include <QRegularExpression>
#include <algorithm>
#include <cwchar>

#include <locale.h>

namespace {

// The thread's character types are those of UTF-8 for the length of a scope.
class CUtf8Locale {
public:
    CUtf8Locale() {
        // For the length of the process: making it takes longer than all else here.
        static const locale_t UTF8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        previous_ = uselocale(UTF8);
    }
    ~CUtf8Locale() { uselocale(previous_); }
    CUtf8Locale(const CUtf8Locale&) = delete;
    CUtf8Locale& operator=(const CUtf8Locale&) = delete;

private:
    locale_t previous_;
};

// -1 for what is not shown.
int Width(char32_t ch) {
    return wcwidth(static_cast<wchar_t>(ch));
}

}  // namespace

int TerminalWidth(const QString& text) {
    const CUtf8Locale utf8;
    int width = 0;
    for (const char32_t ch : text.toUcs4())
        width += std::max(Width(ch), 0);
    return width;
}

QString Printable(const QString& text) {
    const CUtf8Locale utf8;
    QString printable;
    for (const char32_t ch : text.toUcs4())
        printable += Width(ch) < 0 ? QString(QChar::ReplacementCharacter) : QString::fromUcs4(&ch, 1);
    return printable;
}

QString WithoutPassword(const CAtlString& address) {
    static const QRegularExpression password("(//[^/?#:@]*):[^/?#]*@");
    return address.ToQString().replace(password, "\\1@");
}
