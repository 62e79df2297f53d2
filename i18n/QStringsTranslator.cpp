// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "i18n/QStringsTranslator.h"

#include "i18n/CResourceManagerLinux.h"
#include "i18n/LanguageTable.h"

QStringsTranslator& QStringsTranslator::Instance() {
    static QStringsTranslator translator;
    return translator;
}

bool QStringsTranslator::load(const QString& language, const QString& productName, const QString& directory) {
    const bool isLanguages = directory.contains(QLatin1String("Languages"), Qt::CaseInsensitive);
    const QString folder = isLanguages ? directory : directory + QLatin1String("Languages/");
    SetupResourceManager(ResolveLanguageId(language), folder, productName);
    return true;
}

QString QStringsTranslator::translate(const char* /*context*/, const char* sourceText,
                                      const char* /*disambiguation*/, int /*n*/) const {
    return GetResourceManager()->GetString(sourceText).ToQString();
}
