// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/Downloader.h"

#include <QCoreApplication>

#include "net/ProxyAddress.h"
#include "net/QtDownloader.h"
#include "net/Transfer.h"
#include "platform/files/Addresses.h"
#include "platform/files/CTemporaryFolder.h"
#include "platform/files/CVardoDirectoryPath.h"
#include "platform/files/CVardoFilePath.h"
#include "platform/text/ResultCodes.h"

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
    CAtlString file;
    const std::unique_ptr<AheadTransfer> ahead = ahead_.Take(url);
    if (!ahead || !Receive(*ahead, file))
        file = Fetch(url, bounds_);
    if (file.IsEmpty())
        TellFailure(FailureText(last_));
    StartAhead();
    return file;
}

void Downloader::TellFailure(const QString& reason) {
    if (failed_ && !isCancelled_)
        failed_(reason);
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
    if (!urls.empty()) {
        TakeProxySettings();
        StartAhead();
        return;
    }
    threads_->End();
    threads_->Memory().EndCheck();
}

void Downloader::Cancel() {
    isCancelled_ = true;
    if (inHand_)
        inHand_->Cancel();
    ahead_.Plan({});
}

CAtlString Downloader::Fetch(const CAtlString& url, const TransferBounds& bounds) {
    last_ = {.url = url};
    if (isCancelled_)
        return {};
    const CVardoFilePath target = CVardoDirectoryPath::GetTempFilePath(AddressExtension(url), baseName_);
    if (target.IsEmpty()) {
        last_.error =
            CAtlString(QCoreApplication::translate("Downloader", "There is no folder for temporary files"));
        last_.culprit = TransferRecord::Culprit::COMPUTER;
        Note(last_);
        return {};
    }
    QtDownloader transfer(bounds, threads_);
    transfer.Start(url, target.GetFilePathString(), this);
    // It may have been cancelled just after its end.
    if (Finish(transfer) == RESULT_OK && !isCancelled_)
        return target.GetFilePathString();
    target.Delete();
    return {};
}

bool Downloader::Receive(AheadTransfer& ahead, CAtlString& file) {
    const int result = Finish(ahead.transfer);
    if (ahead.transfer.IsHeld() || (result != RESULT_OK && !(ahead.route == GetRoute())))
        return false;
    if (!last_.error.IsEmpty())
        ConnectionFailed(last_.error);
    if (result == RESULT_OK && !isCancelled_)
        file = ahead.HandOut(baseName_);
    return true;
}

int Downloader::Finish(QtDownloader& transfer) {
    inHand_ = &transfer;
    const int result = transfer.Finish();
    inHand_ = nullptr;
    Note(transfer.GetRecord());
    return result;
}

void Downloader::StartAhead() {
    if (GetRoute().IsDirect() || threads_->Memory().Of(GetRoute().ProxyName()).isOpen)
        ahead_.Start(GetRoute());
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
    SetProxy(WithoutUser(host), port);
    SetCredentials(userName, password);
}
