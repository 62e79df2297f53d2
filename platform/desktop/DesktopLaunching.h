// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Starts programs, behind a door that tests can replace, and opens web addresses in the user's browser.
#pragma once

#include "platform/text/CAtlString.h"

#include <QString>
#include <QStringList>

// Starts programs without a shell: each argument arrives as it is. GUI thread only.
class IProcessStarter {
public:
    virtual ~IProcessStarter() = default;
    // Starts a program and waits for its end, for at most limitMs milliseconds, while events are served; true
    // when it ended in that time, whatever its exit code.
    virtual bool RunAndWait(const QString& program, const QStringList& arguments, int limitMs) = 0;
    // Starts a program that outlives this one; false when it could not be started.
    virtual bool StartDetached(const QString& program, const QStringList& arguments) = 0;
};

enum DesktopKind : int { DESKTOP_UNKNOWN = 0, DESKTOP_KDE = 1, DESKTOP_GNOME = 2, DESKTOP_OTHER = 3 };

// How long a desktop's own launcher may take, in milliseconds.
inline constexpr int LAUNCHER_LIMIT_MS = 30000;

// These functions read the process's environment, and hand the address on as one argument. GUI thread only.

// Reads DESKTOP_SESSION; for a session named "default" also GNOME_DESKTOP_SESSION_ID and KDE_FULL_SESSION.
// Unknown when DESKTOP_SESSION is not set.
DesktopKind DetectDesktop();

// Opens the page, as WebAddress puts it, with the desktop's launcher, or else with the first known browser on
// the PATH, or else with xdg-open when the PATH has it. False when none of them was possible, or url is not a
// web address: a text that a program would take for an option, a local file or a script is not passed on. May
// take LAUNCHER_LIMIT_MS, and serves events meanwhile.
bool OpenURL(const CAtlString& url, IProcessStarter& starter);

// Run gnome-www-browser, or kfmclient openURL, and wait for its end: true when it ended within
// LAUNCHER_LIMIT_MS, whatever its exit code.
bool RunGnomeBrowser(const CAtlString& url, IProcessStarter& starter);
bool RunKdeBrowser(const CAtlString& url, IProcessStarter& starter);

// Looks in each directory on the PATH for each of the programs, and starts the first that it finds. True when
// it found one, even if the start failed. False without a PATH. Skips empty entries.
bool RunFromPath(const QStringList& programs, const QString& argument, IProcessStarter& starter);
