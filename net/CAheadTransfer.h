// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A transfer that runs before its file is asked for.
#pragma once

#include "net/ConnectionInfo.h"
#include "net/QtDownloader.h"
#include "platform/CVardoFilePath.h"

#include <boost/function.hpp>

// Fetches from its construction on, with a copy of the settings of then. It is silent: a question for
// credentials is declined, not shown, and what else it has to tell is kept for Report. GUI thread only, like
// the transfer itself. The destructor ends a transfer that still runs, and deletes a file that was not handed
// out.
class CAheadTransfer : private ConnectionInfo {
public:
    using EndedCallback = boost::function<void(const CAheadTransfer&)>;

    // ended is called once, by an event of this thread after the transfer's end, unless this object is gone
    // by then; it must not destroy it.
    CAheadTransfer(const CAtlString& url, const CVardoFilePath& file, const ConnectionInfo& settings,
                   const TransferBounds& bounds, const EndedCallback& ended);
    CAheadTransfer(const CAheadTransfer&) = delete;
    CAheadTransfer& operator=(const CAheadTransfer&) = delete;
    ~CAheadTransfer() override;

    const CAtlString& GetUrl() const { return url_; }
    bool IsRunning() const { return transfer_.IsRunning(); }
    // Waits for the end, with the events of the thread flowing, and returns one of the RESULT_ codes.
    int Finish();
    // Ends the transfer, and so a Finish that waits for it.
    void Cancel() { transfer_.Cancel(); }
    // After the end: the proxy wanted credentials.
    bool WasAskedForCredentials() const { return wasAsked_; }
    // After Finish.
    TransferRecord GetRecord() const { return transfer_.GetRecord(); }
    // After Finish: a fetch with these settings would have gone the same way and asked nobody.
    bool CanBeTrusted(const ConnectionInfo& settings) const;
    // Passes on what the transfer had to tell.
    void Report(ConnectionInfo& receiver) const;
    // After a success: gives the file its name, by which it belongs to the caller from now on, and returns
    // its path. An empty target, or one that cannot be had, leaves the file's own name.
    CAtlString HandOut(const CVardoFilePath& target);

private:
    void ConnectionFailed(const CAtlString& error) override;
    bool ProxyAuthRequired(const CAtlString& host, int port, CAtlString& userName,
                           CAtlString& password) override;
    void DataReadProgress(int done, int total) override;

    CAtlString url_;
    CVardoFilePath file_;
    bool isRunning_ = true;
    bool wasAsked_ = false;
    CAtlString error_;
    int done_ = 0;
    int total_ = 0;
    QtDownloader transfer_;
};
