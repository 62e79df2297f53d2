// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Fetching, as the rooms above the network see it.
#pragma once

#include "platform/text/CAtlString.h"

#include <QString>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>
#include <vector>

class ProxyHandlerBase;
struct TransferRecord;

// Fetches one address into one file. GUI thread only.
class IDownloader {
public:
    // Gets the host and the reason of a failure, in words for the user.
    using FailureCallback = boost::function<void(const QString&)>;
    using TransferCallback = boost::function<void(const TransferRecord&)>;
    // Gets the bytes that have arrived, and the total (0 or less when unknown); may be empty.
    using ProgressCallback = boost::function<void(int, int)>;

    virtual ~IDownloader() = default;
    // The handler knows the proxy and its credentials.
    virtual void SetProxyHandler(const boost::shared_ptr<ProxyHandlerBase>& /*handler*/) {}
    // Download calls it before it returns a failure, except after Cancel; may be empty.
    virtual void SetFailureCallback(const FailureCallback& /*callback*/) {}
    // Tells the failure callback why a fetched file may not be used, unless the fetch was cancelled.
    virtual void TellFailure(const QString& /*reason*/) {}
    // Called once or twice for each download: at the end of each transfer that it waited for, or when none
    // could begin. May be empty.
    virtual void SetTransferCallback(const TransferCallback& /*callback*/) {}
    // The path of a new temporary file with the contents of url; empty when the fetch failed. The caller
    // deletes the file. Serves the thread's events while it waits, and must not be entered again meanwhile.
    virtual CAtlString Download(const CAtlString& url) = 0;
    // The same for an installer, which may be large and take long. Calls progress now and then, and tells no
    // failure.
    virtual CAtlString DownloadInstaller(const CAtlString& url, const ProgressCallback& /*progress*/) {
        return Download(url);
    }
    // Announces the addresses of the next Downloads in their order, and replaces earlier announcements. A
    // downloader may begin to fetch them. An empty list says that the check is over.
    virtual void FetchAhead(const std::vector<CAtlString>& /*urls*/) {}
    // Makes the Download that waits fail at once, and drops what FetchAhead announced. The next Download
    // fetches again. Call it while Download serves events.
    virtual void Cancel() {}
};
