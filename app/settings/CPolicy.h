// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the administrator has settled for every user of the machine.
#pragma once

#include "platform/text/CAtlString.h"

#include <QStringList>
#include <optional>

// The values of the policy, which win over the user's settings and the program's own description, and are
// never written anywhere. Without a value, or with one that cannot be understood, the user's settings and the
// description count. A switch is a number, on when it is 1, or "true" or "false". GUI thread only.
struct CPolicy {
    // Reads the machine's file.
    CPolicy();

    // The names of the values that count, in the order of the members. docs/report.schema.json lists them.
    QStringList names;
    // Why the others do not count, in English: a sentence for each.
    QStringList refusals;
    std::optional<bool> checkUpdates;
    // Days between two automatic checks.
    std::optional<int> interval;
    // An empty host means direct connections.
    std::optional<CAtlString> proxyHost;
    std::optional<int> proxyPort;
    // When on, the program never replaces itself; else that is left to its description.
    std::optional<bool> noSelfUpdate;

    // A host without a port in the policy does not get the user's port.
    bool IsProxyPortFixed() const { return proxyHost || proxyPort; }
};
