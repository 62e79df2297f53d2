// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A maker's folder, made of the samples, of which both the check and the program say what they make of it.
#pragma once

#include "ProductTest.h"
#include "app/catalog/Checks.h"
#include "app/catalog/FindingCodes.h"

#include <QString>
#include <string>
#include <vector>

// Below the folder are "program" (as it is installed, with the shipped languages) and "site" (what is
// published at http://127.0.0.1:8080/).
class CatalogTest : public ProductTest {
public:
    ~CatalogTest() override;

protected:
    CatalogTest();

    // Replaces the first occurrence of a text in a file, or all of the file for an empty text. Strings files
    // are UTF-16; the texts are UTF-8.
    void Alter(const std::string& file, const QString& what, const QString& with);
    // Puts the folder back into the state in which it was laid out.
    void LayOut();
    CFindings Check() const { return CheckBut({}); }
    // What others do not have.
    CFindings CheckBut(const CFindings& others) const;
    // The findings with a code in a line of a file; a line of 0 stands for all lines.
    int Count(const CFindings& findings, const FindingCode& code, const std::string& file, int line) const;

    // What the window shows after a check: name, versions, caption of the button and the page it opens.
    std::vector<std::string> Rows();
    // What the program makes of a text in German, and whether it is written from right to left.
    static std::string InGerman(const char* key, const std::string& languages);

private:
    void CopyTree(const std::string& from, const std::string& to) const;
    std::string Row(IProduct& product, unsigned item);
};
