// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Which language the program speaks.
#pragma once

#include <QString>

// GUI thread only, like everything that reads settings.

// Forces a language, a code or a hexadecimal ID, for the rest of the process; an empty text lifts that.
void SetLocaleOverride(const QString& language);

// The override when there is one. Otherwise the system's locale, or, with useLanguageSettings, what the
// maker's language setup has chosen for this user.
QString GetLocale(bool useLanguageSettings);

// The code that the language table has for a language given as a hexadecimal ID or as a code; the language as
// it is when the table does not know it.
QString LanguageCode(const QString& language);
