// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// How the report's texts come out on a terminal.
#include <gtest/gtest.h>

#include "report/CTextTable.h"
#include "report/PrintableText.h"
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
        {"", ""},
    };
    for (const auto& [address, printed] : addresses)
        EXPECT_EQ(WithoutPassword(address), QString(printed));
}
