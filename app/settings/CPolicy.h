// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the administrator has settled for every user of the machine.
#pragma once

#include "platform/text/CAtlString.h"

#include <QStringList>
#include <optional>

// The values of the policy, which win over the user's settings and the program's own description, and are
// never written anywhere. Without a value, the user's settings and the description count. GUI thread only.
struct CPolicy {
    // Reads the machine's file.
    CPolicy();

    // The names of the values that are set, in the order of the members.
    QStringList names;
    std::optional<bool> checkUpdates;
    // Days between two automatic checks.
    std::optional<int> interval;
    // An empty host means direct connections.
    std::optional<CAtlString> proxyHost;
    // With a host and no port, the port of a host that is stored without one.
    std::optional<int> proxyPort;
    // The program never replaces itself. False leaves that to its description.
    bool noSelfUpdate = false;
};
