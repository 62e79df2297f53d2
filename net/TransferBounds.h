// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// How much a server may ask of this side before its answer counts as failed.
#pragma once

#include <QtGlobal>
#include <chrono>

// As constructed: for descriptions, lists and messages, which are small. Each bound is for one request with
// its answer; the time that a user takes to answer a proxy's question does not count.
struct TransferBounds {
    // The most bytes of an installer, so that no server fills the disk.
    static constexpr qint64 INSTALLER_BYTES = qint64{4} * 1024 * 1024 * 1024;

    // Until the connection is open, with the look-up of the host's name.
    std::chrono::milliseconds connect{10'000};
    // Nothing arrives for so long.
    std::chrono::milliseconds silence{30'000};
    // From the request to the end of the answer's head, and to the end of all of it unless the body may take
    // its time.
    std::chrono::milliseconds wholeTime{60'000};
    bool mayTakeItsTime = false;
    // The bytes of the body.
    qint64 bodyBytes = 16 * 1024 * 1024;

    // The same for a file that may be large and take its time.
    TransferBounds ForInstaller() const { return {connect, silence, wholeTime, true, INSTALLER_BYTES}; }
};
