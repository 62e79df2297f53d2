// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/LanguageCodes.h"

#include "i18n/LanguageTable.h"

std::vector<QString> LanguageCodes(const CCatalog& catalog) {
    std::vector<QString> codes;
    for (const CCatalogFile* table : catalog.FilesOf(FileKind::LANGUAGE_TABLE)) {
        const TiXmlElement* language = table->GetRoot() ? table->GetRoot()->FirstChildElement() : nullptr;
        for (; language; language = language->NextSiblingElement())
            if (const CAtlString code = XmlAttribute(*language, LanguageFormat::CODE); !code.IsEmpty())
                codes.push_back(code.ToQString());
    }
    return codes;
}
