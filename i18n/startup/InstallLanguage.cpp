// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "i18n/startup/InstallLanguage.h"

#include <QApplication>

#include "i18n/Language.h"
#include "i18n/LanguageTable.h"
#include "i18n/QStringsTranslator.h"

namespace {

void SetLayoutDirection(const QApplication* application, bool rightToLeft) {
    if (application)
        QApplication::setLayoutDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
}

}  // namespace

bool InstallLanguage(const QString& applicationName, QApplication* application, bool useLanguageSettings) {
    const QString folder = OwnLanguagesFolder();
    if (folder.isEmpty())
        return false;
    const QString language = GetLocale(useLanguageSettings);
    QStringsTranslator& translator = QStringsTranslator::Instance();
    if (!applicationName.isEmpty() && translator.load(language, applicationName, folder) &&
        QCoreApplication::installTranslator(&translator)) {
        SetLayoutDirection(application, IsRightToLeft(language));
        return true;
    }
    if (!language.startsWith(QLatin1String("en")))
        return false;
    SetLayoutDirection(application, false);
    return true;
}
