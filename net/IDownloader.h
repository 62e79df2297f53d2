// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Fetching, as everything above the network sees it.
#pragma once

#include "platform/text/CAtlString.h"

#include <QString>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>
#include <vector>

class ProxyHandlerBase;

// Fetches one address into one file. GUI thread only.
class IDownloader {
public:
    // Why a fetch failed, in words for the user, with the host.
    using FailureCallback = boost::function<void(const QString&)>;
    // Bytes that have arrived, and in all (0 or less when unknown); may be empty.
    using ProgressCallback = boost::function<void(int, int)>;

    virtual ~IDownloader() = default;
    // Who knows the proxy and its credentials; does nothing unless a downloader needs it.
    virtual void SetProxyHandler(const boost::shared_ptr<ProxyHandlerBase>& /*handler*/) {}
    // Called once for each Download that fails and was not cancelled, before it returns; may be empty.
    virtual void SetFailureCallback(const FailureCallback& /*callback*/) {}
    // The path of a new temporary file with the contents of url, which the caller deletes; empty when the
    // fetch failed, for whatever reason. Serves the thread's events while it waits, and must not be entered
    // again meanwhile.
    virtual CAtlString Download(const CAtlString& url) = 0;
    // The same for a program to be started: it may be as large and take as long as it needs, but nothing less
    // than all of it counts. progress is called now and then meanwhile.
    virtual CAtlString DownloadInstaller(const CAtlString& url, const ProgressCallback& /*progress*/) {
        return Download(url);
    }
    // Says what Download will be asked for next, in that order and as often as it stands here, in place of
    // what was said before; with an empty list, that the check is over. A downloader may begin to
    // fetch them.
    virtual void FetchAhead(const std::vector<CAtlString>& /*urls*/) {}
    // Ends the Download that waits, which fails at once, and drops what FetchAhead announced. The next
    // Download fetches again. To be called while Download serves events.
    virtual void Cancel() {}
};
