// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Version texts as numbers, and their order. The common forms, and ranges, are in the tables of
// docs/formats.md.
#include <gtest/gtest.h>

#include "DataTable.h"
#include "products/CVersionString.h"
#include "support/TextPrinting.h"

TEST(Versions, UnusualTexts) {
    for (const QStringList& row : DataTable("versions.txt")) {
        EXPECT_EQ(CVersionString(row[0]).IsValid(), row[2] == "valid") << row[0].toStdString();
        EXPECT_EQ(CVersionString(row[0]).GetString(), CAtlString(row[1]));
    }
    const QString nines(100'000, '9');
    EXPECT_EQ(CVersionString(nines + ".1.1." + nines).GetString(), L"2147483647.1.1.2147483647");
    CVersionString again(L"1.2.3.4");
    EXPECT_EQ(again.SetString(CAtlStringA("x.5.y.6")).GetString(), L"1.5.3.6")
        << "a part without a number keeps the one from before";
}

TEST(Versions, AreTotallyOrdered) {
    const auto ranks = DataTable("version-order.txt");
    for (std::size_t i = 0; i < ranks.size(); ++i)
        for (std::size_t j = 0; j < ranks.size(); ++j)
            for (const QString& a : ranks[i])
                for (const QString& b : ranks[j]) {
                    SCOPED_TRACE((a + " and " + b).toStdString());
                    EXPECT_EQ(CVersionString(a).IsLess(CVersionString(b)), i < j);
                    EXPECT_EQ(CVersionString(a).IsEqual(CVersionString(b)), i == j);
                    EXPECT_EQ(CVersionString(a).IsGreater(CVersionString(b)), i > j);
                }
}
