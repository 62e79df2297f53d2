// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/CFetchAhead.h"

#include <algorithm>
#include <iterator>
#include <ranges>
#include <utility>

#include "platform/files/Addresses.h"
#include "platform/files/CTemporaryFolder.h"
#include "platform/files/FileSystem.h"

AheadTransfer::~AheadTransfer() {
    transfer.Abandon();
    if (!file.IsEmpty())
        file.Delete();
}

CAtlString AheadTransfer::HandOut(const CAtlString& baseName) {
    const CVardoFilePath own = std::exchange(file, CVardoFilePath());
    const CVardoFilePath renamed = CVardoDirectoryPath::ClaimFile(
        CVardoDirectoryPath(own), AddressExtension(url), baseName, [&own](const CVardoFilePath& name) {
            return FileSystem::RenameToFree(own.GetFilePathString(), name.GetFilePathString());
        });
    return (renamed.IsEmpty() ? own : renamed).GetFilePathString();
}

void CFetchAhead::Plan(const std::vector<CAtlString>& urls) {
    // Cancel all before the destructors wait for each.
    for (const Entry& entry : entries_)
        if (entry.ahead)
            entry.ahead->transfer.Cancel();
    entries_.clear();
    folder_ = urls.empty() ? CVardoDirectoryPath() : CVardoDirectoryPath::GetTempDirectory();
    for (const CAtlString& url : urls)
        entries_.push_back({url, nullptr});
}

void CFetchAhead::Start(const Route& route) {
    const auto isStarted = [](const Entry& entry) { return entry.ahead && !entry.ahead->transfer.IsHeld(); };
    const auto end = entries_.begin() + std::min(MOST_AHEAD, std::ssize(entries_));
    if (folder_.IsEmpty() || std::count_if(entries_.begin(), end, isStarted) > FEW_AHEAD)
        return;
    for (Entry& entry : std::ranges::subrange(entries_.begin(), end)) {
        if (isStarted(entry))
            continue;
        const CAtlString number(QString("-%1").arg(++serial_));
        const CVardoFilePath file =
            CVardoDirectoryPath::Combine(folder_, CTemporaryFolder::NamesOfProcess() + number);
        // NOLINTNEXTLINE(modernize-make-unique): a transfer cannot be moved into it.
        entry.ahead.reset(new AheadTransfer{entry.url, route, file, QtDownloader(bounds_, threads_)});
        entry.ahead->transfer.StartAhead(entry.url, file.GetFilePathString(), route);
    }
}

std::unique_ptr<AheadTransfer> CFetchAhead::Take(const CAtlString& url) {
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const Entry& entry) { return entry.url.Compare(url) == 0; });
    if (found == entries_.end())
        return nullptr;
    std::unique_ptr<AheadTransfer> ahead = std::move(found->ahead);
    entries_.erase(entries_.begin(), found + 1);
    return ahead;
}
