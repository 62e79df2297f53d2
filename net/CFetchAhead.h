// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What will be asked for soon, and the transfers that are ahead of the asking.
#pragma once

#include "net/CAheadTransfer.h"
#include "platform/CAtlString.h"

#include <deque>
#include <memory>
#include <vector>

// A queue of addresses, the first of which may be on their way. GUI thread only. Files that nobody took are
// deleted, and transfers that nobody waits for are ended, with the next plan and with this object.
class CFetchAhead {
public:
    // The most transfers that run at a time, with the one that is waited for.
    static constexpr std::size_t LIMIT = 6;
    // The most transfers that run, or have ended and wait to be taken: so many files lie about at most.
    static constexpr std::size_t MOST_AHEAD = 4 * LIMIT;

    // Each transfer is held to the bounds; ended is told of the end of each.
    CFetchAhead(const TransferBounds& bounds, const CAheadTransfer::EndedCallback& ended)
        : bounds_(bounds), ended_(ended) {}

    // Replaces what was planned and started.
    void Plan(const std::vector<CAtlString>& urls);
    // Starts the next transfers, with these settings, until LIMIT run, of which others are not of this queue.
    void Start(const ConnectionInfo& settings, std::size_t others);
    // The transfer that was started for an address; null when there is none. Forgets the address and whatever
    // was planned before it: its turn is over.
    std::unique_ptr<CAheadTransfer> Take(const CAtlString& url);

private:
    struct Entry {
        CAtlString url;
        std::unique_ptr<CAheadTransfer> transfer;
    };

    std::size_t CountRunning() const;

    TransferBounds bounds_;
    CAheadTransfer::EndedCallback ended_;
    std::deque<Entry> entries_;
    // How many of the first entries have a transfer.
    std::size_t started_ = 0;
    // Makes the names of files differ that do not exist yet.
    int serial_ = 0;
};
