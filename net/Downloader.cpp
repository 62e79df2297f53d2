// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/Downloader.h"

#include "net/QtDownloader.h"
#include "platform/CVardoDirectoryPath.h"
#include "platform/CVardoFilePath.h"
#include "platform/ResultCodes.h"

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
    const CAtlString extension = CVardoFilePath(url).GetExtension();
    const CVardoFilePath target = CVardoDirectoryPath::GetTempFilePath(extension, BASE_NAME);
    if (target.IsEmpty())
        return {};
    TakeProxySettings();
    QtDownloader transfer;
    const int result = transfer.DownloadOnThread(url, target.GetFilePathString(), this);
    return result == RESULT_OK ? target.GetFilePathString() : CAtlString();
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
