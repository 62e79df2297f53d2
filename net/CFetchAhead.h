// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The files that the check will ask for soon, and their transfers, which run ahead of it.
#pragma once

#include "net/QtDownloader.h"
#include "platform/files/CVardoDirectoryPath.h"
#include "platform/files/CVardoFilePath.h"
#include "platform/text/CAtlString.h"

#include <deque>
#include <memory>
#include <vector>

// A transfer that starts before the check asks for its file, with the settings of that moment. The destructor
// ends it if it still runs, and deletes the file unless it was handed out.
struct AheadTransfer {
    CAtlString url;
    Route route;
    CVardoFilePath file;
    QtDownloader transfer;

    ~AheadTransfer();

    // After a success: gives the file to the caller and returns its path. Its name is then a free one that
    // begins with baseName, or stays its own when it cannot be renamed.
    CAtlString HandOut(const CAtlString& baseName);
};

// A queue of addresses; the transfers of the first ones may run already. The next plan and the destructor end
// transfers and delete files that were not taken. GUI thread only.
class CFetchAhead {
public:
    // The most transfers that have started and are not yet taken; each may hold a file.
    static constexpr std::ptrdiff_t MOST_AHEAD = 48;
    // The low-water mark: with so many left the next ones start, all at once, because waking a thread costs
    // as much as preparing a transfer.
    static constexpr std::ptrdiff_t FEW_AHEAD = 12;

    // Each transfer has these bounds.
    CFetchAhead(const TransferBounds& bounds, const boost::shared_ptr<CTransferThreads>& threads)
        : bounds_(bounds), threads_(threads) {}
    ~CFetchAhead() { Plan({}); }

    // Replaces the earlier plan.
    void Plan(const std::vector<CAtlString>& urls);
    // When no more than FEW_AHEAD are under way, starts the next transfers by this route, up to MOST_AHEAD,
    // and restarts those that were held.
    void Start(const Route& route);
    // The transfer that was started for an address, or null. Forgets the address and those planned before it.
    std::unique_ptr<AheadTransfer> Take(const CAtlString& url);

private:
    struct Entry {
        CAtlString url;
        std::unique_ptr<AheadTransfer> ahead;
    };

    TransferBounds bounds_;
    boost::shared_ptr<CTransferThreads> threads_;
    std::deque<Entry> entries_;
    // Holds the files of one plan; empty without a plan, or when there is no folder for temporary files.
    CVardoDirectoryPath folder_;
    // Makes the names of the files differ before the files exist.
    int serial_ = 0;
};
