// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Which language the program speaks.
#pragma once

#include <QString>

// For the GUI thread, like everything that reads settings.

// Forces a language, a code or a hexadecimal ID, for the rest of the process; an empty text lifts that.
void SetLocaleOverride(const QString& language);

// The desktop's language: the code alone, or with its country for en, pt, zh and hi. "en_CA" for the C
// locale.
QString GetSystemLocale();

// The override when there is one. Otherwise the system's locale, or, with useLanguageSettings, what the
// maker's language setup has chosen for this user.
QString GetLocale(bool useLanguageSettings);
