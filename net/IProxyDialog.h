// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// How the user is asked for a proxy and its credentials, behind a door: a program without windows has no such
// dialog, and a test can answer in its place.
#pragma once

#include "platform/text/CAtlString.h"

class QWidget;

// What the user sees and edits.
struct ProxyEntry {
    // Empty: there is no proxy.
    CAtlString host;
    // 0 when the user gave none.
    int port = 0;
    CAtlString userName;
    CAtlString password;
};

// Each question returns when the user has answered. Declined, or closed, it returns false and leaves the
// entry as it was. GUI thread only.
class IProxyDialog {
public:
    virtual ~IProxyDialog() = default;
    // The proxy of the entry wants credentials; the user may change only these.
    virtual bool AskForCredentials(ProxyEntry& entry) = 0;
    // The user may change all of the entry. The dialog belongs to parent while it is open.
    virtual bool EditOptions(ProxyEntry& entry, QWidget* parent) = 0;
};
