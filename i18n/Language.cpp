// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "i18n/Language.h"

#include "i18n/CVARDOLanguageSettingsCache.h"
#include "i18n/LanguageTable.h"

namespace {

QString& LocaleOverride() {
    static QString language;
    return language;
}

}  // namespace

void SetLocaleOverride(const QString& language) {
    LocaleOverride() = language;
}

QString GetLocale(bool useLanguageSettings) {
    if (!LocaleOverride().isEmpty())
        return LocaleOverride();
    if (!useLanguageSettings)
        return GetSystemLocale();
    return GetLanguageSettings(CAtlString())->GetLanguage().ToQString();
}

QString LanguageCode(const QString& language) {
    const CAtlString id = LanguageIdText(ParseHexLanguageId(language));
    const CAtlString code = LookupLanguageAttribute(id, LanguageFormat::ID, LanguageFormat::CODE);
    const bool known = code != id && !code.IsEmpty();
    return (known ? code : LookupLanguageAttribute(language, LanguageFormat::CODE, LanguageFormat::CODE))
        .ToQString();
}
