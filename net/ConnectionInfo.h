// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The settings of one transfer, and whom a transfer tells about what happens to it.
#pragma once

#include "platform/CAtlString.h"

#include <boost/function.hpp>

// Read by the transfer on its own thread while the thread that asked for it waits; everything else happens on
// the asking thread (the GUI thread). A notification without a callback does nothing.
class ConnectionInfo {
public:
    using FailedCallback = boost::function<void(CAtlString)>;
    using AuthCanceledCallback = boost::function<void()>;
    using AuthRequiredCallback = boost::function<bool(const CAtlString&, int, CAtlString&, CAtlString&)>;
    using ProgressCallback = boost::function<void(int, int)>;

    // How a transfer is routed.
    static constexpr int DIRECT = 0;
    static constexpr int THROUGH_PROXY = 2;

    ConnectionInfo() = default;
    ConnectionInfo(const ConnectionInfo&) = default;
    ConnectionInfo& operator=(const ConnectionInfo&) = default;
    virtual ~ConnectionInfo() = default;

    // A connection failed; error is Qt's text for it.
    virtual void ConnectionFailed(const CAtlString& error);
    virtual void ProxyAuthCanceled();
    // The proxy at host and port wants credentials. True when userName and password are to be tried; false
    // without a callback.
    virtual bool ProxyAuthRequired(const CAtlString& host, int port, CAtlString& userName,
                                   CAtlString& password);
    // Bytes read so far, and in all (0 or less when unknown).
    virtual void DataReadProgress(int done, int total);

    const CAtlString& GetUserName() const { return userName_; }
    const CAtlString& GetPassword() const { return password_; }
    void SetCredentials(const CAtlString& userName, const CAtlString& password);
    const CAtlString& GetProxyHost() const { return proxyHost_; }
    int GetProxyPort() const { return proxyPort_; }
    // Through the proxy at host and port when host is not empty, else direct.
    void SetProxy(const CAtlString& host, int port);
    int GetProxyMode() const { return proxyMode_; }

    void SetConnectionFailedCallback(const FailedCallback& callback) { connectionFailed_ = callback; }
    void SetProxyAuthCanceledCallback(const AuthCanceledCallback& callback) { proxyAuthCanceled_ = callback; }
    void SetProxyAuthRequiredCallback(const AuthRequiredCallback& callback) { proxyAuthRequired_ = callback; }
    void SetProgressCallback(const ProgressCallback& callback) { progress_ = callback; }

private:
    CAtlString userName_;
    CAtlString password_;
    CAtlString proxyHost_;
    int proxyPort_ = 0;
    int proxyMode_ = DIRECT;
    FailedCallback connectionFailed_;
    AuthCanceledCallback proxyAuthCanceled_;
    AuthRequiredCallback proxyAuthRequired_;
    ProgressCallback progress_;
};
