// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/Downloader.h"

#include "net/FailureText.h"
#include "net/QtDownloader.h"
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
    TakeProxySettings();
    StartAhead();
    error_.Empty();
    status_ = 0;
    CAtlString file;
    const std::unique_ptr<CAheadTransfer> transfer = ahead_.Take(url);
    if (!transfer || !Receive(*transfer, file))
        file = Fetch(url, bounds_);
    if (file.IsEmpty())
        TellFailure(url);
    StartAhead();
    return file;
}

CAtlString Downloader::DownloadInstaller(const CAtlString& url,
                                         const IDownloader::ProgressCallback& progress) {
    TakeProxySettings();
    SetProgressCallback(progress);
    CAtlString file = Fetch(url, bounds_.ForInstaller());
    SetProgressCallback({});
    return file;
}

void Downloader::FetchAhead(const std::vector<CAtlString>& urls) {
    isCancelled_ = false;
    ahead_.Plan(urls);
    TakeProxySettings();
    StartAhead();
}

void Downloader::Cancel() {
    isCancelled_ = true;
    if (cancelTransfer_)
        cancelTransfer_();
    ahead_.Plan({});
}

CAtlString Downloader::Fetch(const CAtlString& url, const TransferBounds& bounds) {
    const CVardoFilePath target = isCancelled_ ? CVardoFilePath() : TargetOf(url);
    if (target.IsEmpty())
        return {};
    QtDownloader transfer(bounds);
    cancelTransfer_ = [&transfer] { transfer.Cancel(); };
    const int result = transfer.DownloadOnThread(url, target.GetFilePathString(), this);
    cancelTransfer_.clear();
    RememberProxy(transfer.WasLetThrough());
    Note(transfer.GetRecord());
    if (result != RESULT_OK)
        return {};
    // It may have been cancelled just after its end.
    if (isCancelled_)
        target.Delete();
    return isCancelled_ ? CAtlString() : target.GetFilePathString();
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

void Downloader::ConnectionFailed(const CAtlString& error) {
    error_ = error;
    ConnectionInfo::ConnectionFailed(error);
}

void Downloader::TellFailure(const CAtlString& url) const {
    if (failed_ && !isCancelled_)
        failed_(FailureText(url, error_.ToQString(), status_));
}

void Downloader::StartAhead() {
    const bool isProxyOpen = GetProxyHost().Compare(openProxyHost_) == 0 && GetProxyPort() == openProxyPort_;
    if (GetProxyMode() == DIRECT || isProxyOpen)
        ahead_.Start(*this);
}

void Downloader::RememberProxy(bool isOpen) {
    openProxyHost_ = isOpen ? GetProxyHost() : CAtlString();
    openProxyPort_ = GetProxyPort();
}

CVardoFilePath Downloader::TargetOf(const CAtlString& url) const {
    return CVardoDirectoryPath::GetTempFilePath(CVardoFilePath(url).GetExtension(), baseName_);
}

void Downloader::Note(const TransferRecord& record) {
    status_ = record.status;
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
