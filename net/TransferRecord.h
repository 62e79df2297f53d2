// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the network answered to one transfer, for whoever wants to explain what became of it.
#pragma once

#include "platform/text/CAtlString.h"

#include <QtGlobal>

// Never holds a user name or a password of the proxy. An address that is not http was not asked at all, and
// leaves everything behind url as it is here.
struct TransferRecord {
    // Who is to blame for a failure.
    enum class Culprit {
        SITE,
        PROXY,     // it could not be reached, has not answered anybody, or wants credentials
        COMPUTER,  // this one
    };

    CAtlString url{};
    // The proxy that was asked; no host when the connection was direct.
    CAtlString proxyHost{};
    int proxyPort = 0;
    // Of the last header that arrived; 0 when none did.
    int status = 0;
    // Of the last answer's body, as far as it was read.
    qint64 bytes = 0;
    // From the transfer's start to its end, all attempts and questions included.
    qint64 milliseconds = 0;
    // What went wrong, in Qt's words or the program's; empty when a whole answer came, of whatever status.
    CAtlString error{};
    Culprit culprit = Culprit::SITE;
    bool succeeded = false;
};
