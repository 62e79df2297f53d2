// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The language that the maker's language setup, or else the desktop, has chosen for this user.
#pragma once

#include "platform/text/CAtlString.h"

#include <QString>

// The desktop's language: the code alone, or with its country for en, pt, zh and hi. "en_CA" for the C
// locale.
QString GetSystemLocale();

// The same for the name of a locale, which is a language, "_" and a country, or "C".
QString ReduceLocaleName(const QString& name);

// A source of the language. GUI thread only.
class IGUILang {
public:
    virtual ~IGUILang() = default;
    // The language as a hexadecimal ID, or as a code when its ID is not known.
    virtual CAtlString GetLanguage() const = 0;
};

// Reads the settings anew at each call and keeps nothing. The first of these that says something decides: the
// language setup's "LanguageID" of this user; the first entry of KDE's list of languages, in a KDE session;
// the system's locale, in which every English but the British is that of the United States.
class CVARDOLanguageSettingsCache : public IGUILang {
public:
    CAtlString GetLanguage() const override;

    // The code for a locale as GetSystemLocale answers it: "en_US" for every English but "en_GB".
    static QString CodeOfLocale(const QString& locale);
};

// The process's one instance. Settings do not depend on a product, so the name is not used.
IGUILang* GetLanguageSettings(const CAtlString& productName);
