// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/CFetchAhead.h"

#include <algorithm>

#include <unistd.h>

#include "platform/Addresses.h"
#include "platform/CTemporaryFolder.h"
#include "platform/CVardoDirectoryPath.h"

void CFetchAhead::Plan(const std::vector<CAtlString>& urls) {
    entries_.clear();
    started_ = 0;
    for (const CAtlString& url : urls)
        entries_.push_back({url, nullptr});
}

void CFetchAhead::Start(const ConnectionInfo& settings, std::size_t others) {
    const std::size_t end = std::min(MOST_AHEAD, entries_.size());
    for (std::size_t running = CountRunning() + others; running < LIMIT && started_ < end; ++running) {
        Entry& entry = entries_[started_];
        CAtlString name;
        name.Format(L"%s%d-%d", CTemporaryFolder::OWN_NAME, getpid(), ++serial_);
        const CVardoFilePath file = CVardoDirectoryPath::GetTempFilePath(AddressExtension(entry.url), name);
        if (file.IsEmpty())
            return;
        entry.transfer = std::make_unique<CAheadTransfer>(entry.url, file, settings, bounds_, ended_);
        ++started_;
    }
}

std::size_t CFetchAhead::CountRunning() const {
    const auto end = entries_.begin() + static_cast<std::ptrdiff_t>(started_);
    return static_cast<std::size_t>(
        std::count_if(entries_.begin(), end, [](const Entry& entry) { return entry.transfer->IsRunning(); }));
}

std::unique_ptr<CAheadTransfer> CFetchAhead::Take(const CAtlString& url) {
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const Entry& entry) { return entry.url.Compare(url) == 0; });
    if (found == entries_.end())
        return nullptr;
    std::unique_ptr<CAheadTransfer> transfer = std::move(found->transfer);
    const auto gone = static_cast<std::size_t>(found - entries_.begin()) + 1;
    started_ -= std::min(started_, gone);
    entries_.erase(entries_.begin(), found + 1);
    return transfer;
}
