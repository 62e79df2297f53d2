// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The one service that fetches from the network.
#pragma once

#include "net/ConnectionInfo.h"
#include "net/IDownloader.h"
#include "net/ProxyHandlerBase.h"

#include <boost/shared_ptr.hpp>

// Fetches over HTTP into a fresh file of the temporary directory, through the proxy that its handler knows.
// GUI thread only: the transfer has a thread of its own, and questions for credentials come back here while
// Download waits.
class Downloader : public IDownloader, public ConnectionInfo {
public:
    // What the names of fetched files begin with.
    static constexpr const wchar_t* BASE_NAME = L"NBKTemp";

    // Takes the proxy settings of every later fetch from handler, and its answers when a proxy wants
    // credentials; an empty handler leaves such questions unanswered.
    void SetProxyHandler(const boost::shared_ptr<ProxyHandlerBase>& handler) override;
    CAtlString Download(const CAtlString& url) override;

private:
    void TakeProxySettings();

    boost::shared_ptr<ProxyHandlerBase> proxyHandler_;
};
