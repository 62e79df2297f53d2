// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/desktop/DesktopLaunching.h"

#include <QFile>
#include <QtGlobal>

#include "platform/files/Addresses.h"

namespace {

// The longest argument in bytes, without the NUL at its end (execve(2), MAX_ARG_STRLEN).
constexpr int LONGEST_ARGUMENT = 128 * 1024 - 1;

// In the order of preference within one folder of PATH.
QStringList Browsers() {
    return {"firefox", "mozilla", "netscape", "opera", "konqueror"};
}

bool RunDesktopLauncher(DesktopKind desktop, const CAtlString& url, IProcessStarter& starter) {
    switch (desktop) {
        case DESKTOP_KDE:
            return RunKdeBrowser(url, starter);
        case DESKTOP_GNOME:
            return RunGnomeBrowser(url, starter);
        default:
            return false;
    }
}

}  // namespace

DesktopKind DetectDesktop() {
    if (!qEnvironmentVariableIsSet("DESKTOP_SESSION"))
        return DESKTOP_UNKNOWN;
    const QByteArray session = qgetenv("DESKTOP_SESSION");
    if (session.contains("kde") || session.contains("KDE"))
        return DESKTOP_KDE;
    if (session.contains("gnome") || session.contains("GNOME"))
        return DESKTOP_GNOME;
    if (!session.contains("default") && !session.contains("DEFAULT"))
        return DESKTOP_OTHER;
    if (qEnvironmentVariableIsSet("GNOME_DESKTOP_SESSION_ID"))
        return DESKTOP_GNOME;
    return qEnvironmentVariableIsSet("KDE_FULL_SESSION") ? DESKTOP_KDE : DESKTOP_OTHER;
}

bool OpenURL(const CAtlString& url, IProcessStarter& starter) {
    const CAtlString address = WebAddress(url);
    if (address.IsEmpty() || address.GetLength() > LONGEST_ARGUMENT)
        return false;
    return RunDesktopLauncher(DetectDesktop(), address, starter) ||
           RunFromPath(Browsers(), address.ToQString(), starter) ||
           RunFromPath({"xdg-open"}, address.ToQString(), starter);
}

bool RunGnomeBrowser(const CAtlString& url, IProcessStarter& starter) {
    return starter.RunAndWait("gnome-www-browser", {url.ToQString()}, LAUNCHER_LIMIT_MS);
}

bool RunKdeBrowser(const CAtlString& url, IProcessStarter& starter) {
    return starter.RunAndWait("kfmclient", {"openURL", url.ToQString()}, LAUNCHER_LIMIT_MS);
}

bool RunFromPath(const QStringList& programs, const QString& argument, IProcessStarter& starter) {
    const QStringList directories = qEnvironmentVariable("PATH").split(':', Qt::SkipEmptyParts);
    for (const QString& directory : directories)
        for (const QString& program : programs) {
            const QString path = directory + '/' + program;
            if (QFile::exists(path)) {
                starter.StartDetached(path, {argument});
                return true;
            }
        }
    return false;
}
