// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The one service that fetches from the network.
#pragma once

#include "net/CFetchAhead.h"
#include "net/ConnectionInfo.h"
#include "net/IDownloader.h"
#include "net/ProxyHandlerBase.h"

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

// Fetches over HTTP into a fresh file of the temporary directory, through the proxy that its handler knows.
// GUI thread only: transfers have threads of their own, and questions for credentials come back here while
// Download waits.
//
// From the first Download on, what FetchAhead announced is on its way before Download is asked for it, up to
// LIMIT files at once, over connections that last. Through a proxy that is only so after it has let a request
// pass, so that there is one question for credentials at a time. What waits its turn asks nobody. A host or
// proxy that was silent is not waited for again until FetchAhead is given an empty list.
class Downloader : public IDownloader, public ConnectionInfo {
public:
    // What the names of fetched files begin with.
    static constexpr const wchar_t* BASE_NAME = L"NBKTemp";
    // The most transfers that run at a time.
    static constexpr std::size_t LIMIT = 6;
    using TransferCallback = boost::function<void(const TransferRecord&)>;
    // No file that was fetched is still needed when it is older.
    static constexpr std::chrono::hours LONGEST_USE{7 * 24};

    // Removes what earlier runs fetched and left behind, when it is older than LONGEST_USE and no other
    // program of the maker's can have made it (CTemporaryFolder::OWN_NAME).
    static void RemoveStaleFiles();

    // What is fetched is held to the bounds, installers to those that follow from them. The names of fetched
    // files begin with baseName; another one than BASE_NAME keeps out of the way of a process of the same
    // user that fetches at the same time.
    explicit Downloader(const TransferBounds& bounds = {}, const CAtlString& baseName = BASE_NAME)
        : bounds_(bounds), baseName_(baseName), ahead_(bounds, threads_) {}

    // Told of every transfer that Download and DownloadInstaller waited for, when it has ended; a file may
    // take two. Empty, as at first: nobody is.
    void SetTransferCallback(const TransferCallback& callback) { transferEnded_ = callback; }
    // Takes the proxy settings of every later fetch from handler, and its answers when a proxy wants
    // credentials; an empty handler leaves such questions unanswered.
    void SetProxyHandler(const boost::shared_ptr<ProxyHandlerBase>& handler) override;
    void SetFailureCallback(const FailureCallback& callback) override { failed_ = callback; }
    CAtlString Download(const CAtlString& url) override;
    CAtlString DownloadInstaller(const CAtlString& url,
                                 const IDownloader::ProgressCallback& progress) override;
    void FetchAhead(const std::vector<CAtlString>& urls) override;
    void Cancel() override;

private:
    void TakeProxySettings();
    // A name for a fetched file: that of nothing else at this moment.
    CVardoFilePath TargetOf(const CAtlString& url) const;
    // Keeps what became of a transfer that has ended, and tells who wants to know of it.
    void Note(const TransferRecord& record);
    // A transfer that starts now; the file's path, or an empty text.
    CAtlString Fetch(const CAtlString& url, const TransferBounds& bounds);
    // Waits for a transfer that was started ahead and hands out its file, or an empty text. False when it
    // must be started now instead: it met a question for credentials, or failed by a route that has changed.
    bool Receive(AheadTransfer& ahead, CAtlString& file);
    // Waits for a transfer that was started, which Cancel ends meanwhile; one of the RESULT_ codes.
    int Finish(QtDownloader& transfer);
    // Starts what may be on its way by now.
    void StartAhead();

    TransferBounds bounds_;
    CAtlString baseName_;
    TransferCallback transferEnded_;
    boost::shared_ptr<ProxyHandlerBase> proxyHandler_;
    boost::shared_ptr<CTransferThreads> threads_ = boost::make_shared<CTransferThreads>(LIMIT);
    CFetchAhead ahead_;
    // The download in hand was cancelled.
    bool isCancelled_ = false;
    FailureCallback failed_;
    // How the last fetch ended.
    TransferRecord last_;
    // The transfer that Download waits for; null when there is none.
    QtDownloader* inHand_ = nullptr;
};
