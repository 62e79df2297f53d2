// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "i18n/CVARDOLanguageSettingsCache.h"

#include "i18n/LanguageTable.h"
#include "platform/settings/CSettingsIdentity.h"
#include "platform/settings/SettingsStore.h"

#include <QCoreApplication>
#include <QLocale>
#include <QSettings>
#include <QStringList>

namespace {

// The notebook software has a language of its own; all the other programs share the board's.
CAtlString ProductKey() {
    const QString application = QCoreApplication::applicationName();
    const bool notebook =
        application == QLatin1String("VARDO Notebook") || application == QLatin1String("notebook");
    return notebook ? L"Notebook" : L"VARDO Board";
}

CAtlString LanguageSetupsChoice() {
    const CAtlString key = ProductKey();
    const CSettingsIdentity identity("VARDO Technologies", QCoreApplication::organizationDomain(),
                                     "Language Setup");
    return ReadRegistryString(HKEY_CURRENT_USER, key, L"LanguageID");
}

// KDE's languages, most wanted first and separated by ":"; empty outside of a KDE session.
QString KdeLanguages() {
    if (!qEnvironmentVariableIsSet("KDE_FULL_SESSION"))
        return {};
    const QString file = qEnvironmentVariable("HOME") + QLatin1String("/.kde/share/config/kdeglobals");
    return QSettings(file, QSettings::NativeFormat).value("Locale/Language").toString();
}

}  // namespace

QString GetSystemLocale() {
    return ReduceLocaleName(QLocale::system().name());
}

QString ReduceLocaleName(const QString& name) {
    if (name == QLatin1String("C"))
        return "en_CA";
    if (name == QLatin1String("no_NO"))
        return "nb";
    static const QStringList WITH_COUNTRY = {"en", "pt", "zh", "hi"};
    const QString language = name.section('_', 0, 0);
    return WITH_COUNTRY.contains(language) ? name : language;
}

CAtlString CVARDOLanguageSettingsCache::GetLanguage() const {
    CAtlString chosen = LanguageSetupsChoice();
    if (!chosen.IsEmpty())
        return chosen;
    const QString kde = KdeLanguages();
    return LanguageIdFromCode(kde.isEmpty() ? CodeOfLocale(GetSystemLocale()) : kde.section(':', 0, 0));
}

QString CVARDOLanguageSettingsCache::CodeOfLocale(const QString& locale) {
    const bool english = locale.startsWith(QLatin1String("en_")) && locale != QLatin1String("en_GB");
    return english ? QString("en_US") : locale;
}

IGUILang* GetLanguageSettings(const CAtlString& /*productName*/) {
    static CVARDOLanguageSettingsCache cache;
    return &cache;
}
