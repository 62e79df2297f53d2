// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Makes the application speak its user's language, once, at start-up.
#pragma once

#include <QString>

class QApplication;

// Chooses the language (see GetLocale), installs the translator with the strings of applicationName from the
// folder "Languages" beside the executable's folder, and sets the layout direction of application, which may
// be null when there is no GUI. GUI thread, while a QCoreApplication exists.
//
// True when a translator was installed; that of a language without strings leaves the texts as they are.
// Without an applicationName nothing is installed, and true means that the language is English. False also
// when the executable's folder is gone or has no parent.
bool InstallLanguage(const QString& applicationName, QApplication* application, bool useLanguageSettings);
