// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The one service that fetches from the network.
#pragma once

#include "net/CFetchAhead.h"
#include "net/IDownloader.h"
#include "net/ProxyHandlerBase.h"

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

// Fetches over HTTP into a fresh file of the temporary directory, through the proxy that its handler knows.
// GUI thread only: transfers have threads of their own, and their questions for credentials come to the GUI
// thread while Download waits.
//
// FetchAhead starts the announced transfers, up to MOST_AT_ONCE, over connections that last. Through a proxy
// they start after it has let one request pass, so that only one question for credentials comes at a time. A
// host or proxy that was silent is not asked again until FetchAhead gets an empty list.
class Downloader : public IDownloader, public ConnectionInfo {
public:
    // The beginning of the names of fetched files.
    static constexpr const wchar_t* BASE_NAME = CVardoDirectoryPath::BASE_NAME;
    // The most transfers that run at a time.
    static constexpr std::size_t MOST_AT_ONCE = 6;
    // Older fetched files are no longer needed.
    static constexpr std::chrono::hours LONGEST_USE{7 * 24};

    // Removes files that earlier runs fetched and left behind: those older than LONGEST_USE whose names only
    // this program gives (CTemporaryFolder::OWN_NAME).
    static void RemoveStaleFiles();

    // The bounds hold for each transfer, and bounds.ForInstaller() for installers. The names of fetched files
    // begin with baseName, which keeps apart processes that fetch at the same time.
    explicit Downloader(const TransferBounds& bounds = {}, const CAtlString& baseName = BASE_NAME)
        : bounds_(bounds), baseName_(baseName), ahead_(bounds, threads_) {}

    void SetTransferCallback(const TransferCallback& callback) override { transferEnded_ = callback; }
    // Every later fetch takes its proxy settings from the handler, and the handler answers when a proxy wants
    // credentials. With an empty handler such questions stay unanswered.
    void SetProxyHandler(const boost::shared_ptr<ProxyHandlerBase>& handler) override;
    void SetFailureCallback(const FailureCallback& callback) override { failed_ = callback; }
    void TellFailure(const QString& reason) override;
    CAtlString Download(const CAtlString& url) override;
    CAtlString DownloadInstaller(const CAtlString& url,
                                 const IDownloader::ProgressCallback& progress) override;
    void FetchAhead(const std::vector<CAtlString>& urls) override;
    void Cancel() override;

private:
    void TakeProxySettings();
    // Keeps the record of a transfer that has ended, and calls transferEnded_.
    void Note(const TransferRecord& record);
    // Runs a transfer that starts now. Returns the file's path; empty when it failed.
    CAtlString Fetch(const CAtlString& url, const TransferBounds& bounds);
    // Waits for a transfer that was started ahead and hands out its file; file stays empty when it failed.
    // False when a new one must start: it met a question for credentials, or failed on an earlier route.
    bool Receive(AheadTransfer& ahead, CAtlString& file);
    // Waits for a started transfer, unless Cancel ends it; one of the RESULT_ codes.
    int Finish(QtDownloader& transfer);
    // Starts announced transfers when the connection is direct or the proxy lets requests pass.
    void StartAhead();

    TransferBounds bounds_;
    CAtlString baseName_;
    TransferCallback transferEnded_;
    boost::shared_ptr<ProxyHandlerBase> proxyHandler_;
    boost::shared_ptr<CTransferThreads> threads_ = boost::make_shared<CTransferThreads>(MOST_AT_ONCE);
    CFetchAhead ahead_;
    // Cancel ended the current download.
    bool isCancelled_ = false;
    FailureCallback failed_;
    // How the last fetch ended.
    TransferRecord last_;
    // The transfer that Download waits for, or null.
    QtDownloader* inHand_ = nullptr;
};
