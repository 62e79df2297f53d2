// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What a transfer may ask of this computer, what it reports, and its failure in words.
#pragma once

#include "platform/text/CAtlString.h"

#include <QString>
#include <chrono>

// As constructed, the bounds suit small files: descriptions, lists and messages. Each bound is for one
// request with its answer, or for all that logging in at a proxy takes; the time that a user takes to answer
// a proxy's question does not count.
struct TransferBounds {
    // The most bytes of an installer, so that no server fills the disk.
    static constexpr qint64 INSTALLER_BYTES = qint64{4} * 1024 * 1024 * 1024;

    // Until the connection is open, with the look-up of the host's name.
    std::chrono::milliseconds connect{10'000};
    // The longest time without a byte from the server.
    std::chrono::milliseconds silence{30'000};
    // From before connecting to the end of the answer's head, and of its body unless mayTakeItsTime.
    std::chrono::milliseconds wholeTime{60'000};
    bool mayTakeItsTime = false;
    // The bytes of the body.
    qint64 bodyBytes = qint64{16} * 1024 * 1024;

    // The same for a file that may be large and take its time.
    TransferBounds ForInstaller() const { return {connect, silence, wholeTime, true, INSTALLER_BYTES}; }
};

// What happened in one transfer. It never holds a user name or a password of the proxy. With an address that
// is not http, nothing is sent, and the members behind url keep their defaults.
struct TransferRecord {
    // The party that caused a failure.
    enum class Culprit {
        SITE,
        PROXY,     // it could not be reached, has not answered any request, or wants other credentials
        COMPUTER,  // this one
    };

    CAtlString url{};
    // The proxy that was asked; the host is empty when the connection was direct.
    CAtlString proxyHost{};
    int proxyPort = 0;
    // The status of the last header that arrived; 0 without a header.
    int status = 0;
    // Bytes came in place of a header.
    bool isGarbled = false;
    // The bytes of the last answer's body that were read.
    qint64 bytes = 0;
    // From the transfer's start to its end, all attempts and questions included.
    qint64 milliseconds = 0;
    // What went wrong, in Qt's words or the program's; empty when the status of a whole answer tells it.
    CAtlString error{};
    Culprit culprit = Culprit::SITE;
    bool succeeded = false;
};

// Why a transfer failed, in the user's language: one line of plain text. It begins with the host, with the
// proxy when an error was the proxy's, or with both when either may have answered so, and leaves both out
// when this computer is to blame. The reason is the record's error, or what the answer's status means. Any
// thread.
QString FailureText(const TransferRecord& record);
