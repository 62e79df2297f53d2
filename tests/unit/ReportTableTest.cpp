// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// How the report's texts come out on a terminal.
#include <gtest/gtest.h>
#include <QJsonObject>

#include "platform/files/Addresses.h"
#include "platform/text/PrintableText.h"
#include "report/CTextTable.h"
#include "support/TextPrinting.h"

TEST(ReportTable, LinesUpWhateverTheNamesAreMadeOf) {
    CTextTable table({"NAME", "STATE"});
    for (const char* name : {"Board", "電子黒板", "Planéta", "Plane\u0301ta", "\x1b[2J\n", "100 %1"})
        table.AddRow({name, "current"});
    table.AddRow({"", ""});
    EXPECT_EQ(table.ToText(), QString("NAME      STATE\n"
                                      "Board     current\n"
                                      "電子黒板  current\n"
                                      "Planéta   current\n"
                                      "Plane\u0301ta   current\n"
                                      "\uFFFD[2J\uFFFD     current\n"
                                      "100 %1    current\n"
                                      "-         -\n"));
}

TEST(ReportedAddress, HoldsNoPassword) {
    const std::pair<const char*, const char*> addresses[] = {
        {"http://h/d/f.xml?a:b@c", "http://h/d/f.xml?a:b@c"},
        {"http://u:p@h:80/d", "http://u@h:80/d"},
        {"http://u:p@q:r@h/d:e@f", "http://u@h/d:e@f"},
        {"http://u@h/", "http://u@h/"},
        {"http://u@corp.example:p@h:1/", "http://u@corp.example@h:1/"},
        {"u:p@h/d", "u@h/d"},
        {"http://u:p/w@h/", "http://u@h/"},
        {"http://h:80/a@b", "http://h:80/a@b"},
        {"", ""},
    };
    for (const auto& [address, printed] : addresses)
        EXPECT_EQ(WithoutPassword(address), QString(printed));
}

TEST(PrintableText, HidesAndReordersNothing) {
    const QString text = QString::fromUtf8("a\u202Eb\u200Bc\u009Bd\u007Fe\u2028f\u200Dg\nh") + QChar(0xD800);
    EXPECT_EQ(Printable(text), QString::fromUtf8("a\uFFFDb\uFFFDc\uFFFDd\uFFFDe\uFFFDf\u200Dg\uFFFDh\uFFFD"));
    const QJsonDocument json(QJsonObject{{"k", QString::fromUtf8("\u202E\u009B\U000E0041\n\u4E2D")}});
    EXPECT_EQ(PrintableJson(json), "{\n    \"k\": \"\\u202e\\u009b\\udb40\\udc41\\n\u4E2D\"\n}\n");
    EXPECT_EQ(QJsonDocument::fromJson(PrintableJson(json)), json);
    EXPECT_EQ(PrintableNarrow(L"\u011B]0;x\u0107\n\u019B31m\u00E9 ok"),
              "?]0;x??"
              "?31m\xE9 ok");
    EXPECT_EQ(Cut(QString(600, 'x')), QString(499, 'x') + "\u2026");
    EXPECT_EQ(Cut(QString::fromUtf8("ab\U0001F600c"), 4), "ab\u2026") << "no half of a character";
}
