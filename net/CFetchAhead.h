// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What will be asked for soon, and the transfers that are ahead of the asking.
#pragma once

#include "net/QtDownloader.h"
#include "platform/files/CVardoFilePath.h"
#include "platform/text/CAtlString.h"

#include <deque>
#include <memory>
#include <vector>

// A transfer that is started before its file is asked for, with the settings of then. The destructor ends it
// if it still runs, and deletes a file that was not handed out.
struct AheadTransfer {
    CAtlString url;
    Route route;
    CVardoFilePath file;
    QtDownloader transfer;

    ~AheadTransfer();

    // After a success: gives the file its name, by which it belongs to the caller from now on, and returns
    // its path. An empty target, or one that cannot be had, leaves the file's own name.
    CAtlString HandOut(const CVardoFilePath& target);
};

// A queue of addresses, the first of which may be on their way. GUI thread only. Files that nobody took are
// deleted, and transfers that nobody waits for are ended, with the next plan and with this object.
class CFetchAhead {
public:
    // The most transfers that are started and wait to be taken: so many files lie about at most.
    static constexpr std::size_t MOST_AHEAD = 24;

    // Each transfer is held to the bounds.
    CFetchAhead(const TransferBounds& bounds, const boost::shared_ptr<CTransferThreads>& threads)
        : bounds_(bounds), threads_(threads) {}
    ~CFetchAhead() { Plan({}); }

    // Replaces what was planned and started.
    void Plan(const std::vector<CAtlString>& urls);
    // Starts the next transfers by this route, until MOST_AHEAD are; those that were held are started again.
    void Start(const Route& route);
    // The transfer that was started for an address; null when there is none. Forgets the address and whatever
    // was planned before it: its turn is over.
    std::unique_ptr<AheadTransfer> Take(const CAtlString& url);

private:
    struct Entry {
        CAtlString url;
        std::unique_ptr<AheadTransfer> ahead;
    };

    TransferBounds bounds_;
    boost::shared_ptr<CTransferThreads> threads_;
    std::deque<Entry> entries_;
    // Makes the names of files differ that do not exist yet.
    int serial_ = 0;
};
