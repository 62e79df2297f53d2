// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// How much a server may ask of this side before its answer counts as failed.
#pragma once

#include <QtGlobal>
#include <chrono>
#include <optional>

// As constructed: for descriptions, lists and messages, which are small. Each bound is for one request with
// its answer; the time that a user takes to answer a proxy's question does not count.
struct TransferBounds {
    // Nothing arrives for so long.
    std::chrono::milliseconds silence{30'000};
    // From the request to the end of the answer.
    std::optional<std::chrono::milliseconds> wholeTime{60'000};
    // From the request to the end of the answer's head. Nothing else bounds the head of an installer's
    // answer, and what arrives of it stays in memory.
    std::chrono::milliseconds head{60'000};
    // The bytes of the body.
    std::optional<qint64> bodyBytes{16 * 1024 * 1024};
    // Whether a body may come in chunks (RFC 9112, 7.1). Of such a body that was cut off, Qt's network access
    // manager, which carries requests through some proxies, may take what has arrived for all of it.
    bool mayBeChunked = true;

    // The same for a file that may be large and take its time, but must be whole.
    TransferBounds ForInstaller() const { return {silence, {}, head, {}, false}; }
};
