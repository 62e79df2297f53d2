// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/Downloader.h"

#include "net/FailureText.h"
#include "net/QtDownloader.h"
#include "platform/Addresses.h"
#include "platform/CTemporaryFolder.h"
#include "platform/CVardoDirectoryPath.h"
#include "platform/CVardoFilePath.h"
#include "platform/ResultCodes.h"

void Downloader::RemoveStaleFiles() {
    CTemporaryFolder::OfProcess().RemoveStaleFiles(BASE_NAME, LONGEST_USE);
}

void Downloader::SetProxyHandler(const boost::shared_ptr<ProxyHandlerBase>& handler) {
    proxyHandler_ = handler;
    if (!handler) {
        SetProxyAuthCanceledCallback({});
        SetProxyAuthRequiredCallback({});
        return;
    }
    SetProxyAuthCanceledCallback([handler] { handler->OnProxyAuthCanceled(); });
    SetProxyAuthRequiredCallback(
        [handler](const CAtlString& host, int port, CAtlString& userName, CAtlString& password) {
            return handler->OnProxyAuthRequired(host, port, userName, password);
        });
}

CAtlString Downloader::Download(const CAtlString& url) {
    isCancelled_ = false;
    TakeProxySettings();
    StartAhead();
    last_ = {.url = url};
    CAtlString file;
    const std::unique_ptr<CAheadTransfer> transfer = ahead_.Take(url);
    if (!transfer || !Receive(*transfer, file))
        file = Fetch(url, bounds_);
    if (file.IsEmpty())
        TellFailure();
    StartAhead();
    return file;
}

CAtlString Downloader::DownloadInstaller(const CAtlString& url,
                                         const IDownloader::ProgressCallback& progress) {
    isCancelled_ = false;
    TakeProxySettings();
    SetProgressCallback(progress);
    CAtlString file = Fetch(url, bounds_.ForInstaller());
    SetProgressCallback({});
    return file;
}

void Downloader::FetchAhead(const std::vector<CAtlString>& urls) {
    ahead_.Plan(urls);
}

void Downloader::Cancel() {
    isCancelled_ = true;
    if (cancelTransfer_)
        cancelTransfer_();
    ahead_.Plan({});
}

CAtlString Downloader::Fetch(const CAtlString& url, const TransferBounds& bounds) {
    last_ = {.url = url};
    const CVardoFilePath target = isCancelled_ ? CVardoFilePath() : TargetOf(url);
    if (target.IsEmpty())
        return {};
    QtDownloader transfer(bounds);
    cancelTransfer_ = [&transfer] { transfer.Cancel(); };
    const int result = transfer.DownloadOnThread(url, target.GetFilePathString(), this);
    cancelTransfer_.clear();
    RememberProxy(transfer.WasLetThrough());
    Note(transfer.GetRecord());
    // It may have been cancelled just after its end.
    if (result == RESULT_OK && !isCancelled_)
        return target.GetFilePathString();
    target.Delete();
    return {};
}

bool Downloader::Receive(CAheadTransfer& transfer, CAtlString& file) {
    cancelTransfer_ = [&transfer] { transfer.Cancel(); };
    const int result = transfer.Finish();
    cancelTransfer_.clear();
    Note(transfer.GetRecord());
    if (transfer.WasAskedForCredentials())
        RememberProxy(false);
    if (result != RESULT_OK && !transfer.CanBeTrusted(*this))
        return false;
    transfer.Report(*this);
    if (result == RESULT_OK && !isCancelled_)
        file = transfer.HandOut(TargetOf(transfer.GetUrl()));
    return true;
}

void Downloader::TellFailure() const {
    if (failed_ && !isCancelled_)
        failed_(FailureText(last_));
}

void Downloader::OnAheadEnded(const CAheadTransfer& transfer) {
    if (transfer.WasAskedForCredentials())
        RememberProxy(false);
    StartAhead();
}

void Downloader::StartAhead() {
    const bool isProxyOpen = GetProxyHost().Compare(openProxyHost_) == 0 && GetProxyPort() == openProxyPort_;
    if (GetProxyMode() == DIRECT || isProxyOpen)
        ahead_.Start(*this, cancelTransfer_ ? 1 : 0);
}

void Downloader::RememberProxy(bool isOpen) {
    openProxyHost_ = isOpen ? GetProxyHost() : CAtlString();
    openProxyPort_ = GetProxyPort();
}

CVardoFilePath Downloader::TargetOf(const CAtlString& url) const {
    return CVardoDirectoryPath::GetTempFilePath(AddressExtension(url), baseName_);
}

void Downloader::Note(const TransferRecord& record) {
    last_ = record;
    if (transferEnded_)
        transferEnded_(record);
}

void Downloader::TakeProxySettings() {
    if (!proxyHandler_)
        return;
    CAtlString host;
    CAtlString userName;
    CAtlString password;
    int port = 0;
    proxyHandler_->GetProxySettings(host, port, userName, password);
    SetProxy(host, port);
    SetCredentials(userName, password);
}
