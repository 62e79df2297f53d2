// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The settings of one transfer, and whom a transfer tells about what happens to it.
#pragma once

#include "platform/text/CAtlString.h"

#include <QString>
#include <boost/function.hpp>

// For a proxy.
struct Credentials {
    CAtlString userName;
    CAtlString password;

    bool IsEmpty() const { return userName.IsEmpty(); }
    bool operator==(const Credentials& other) const {
        return userName.Compare(other.userName) == 0 && password.Compare(other.password) == 0;
    }
};

// How a transfer reaches its server.
struct Route {
    // Empty for a direct connection.
    CAtlString proxyHost;
    int proxyPort = 0;
    Credentials credentials;

    bool IsDirect() const { return proxyHost.IsEmpty(); }
    // What the proxy is remembered by.
    QString ProxyName() const { return proxyHost.ToQString() + u':' + QString::number(proxyPort); }
    bool operator==(const Route& other) const {
        return proxyHost.Compare(other.proxyHost) == 0 && proxyPort == other.proxyPort &&
               credentials == other.credentials;
    }
};

// Used on the asking thread (the GUI thread) only: a transfer takes a copy of its route along. A notification
// without a callback does nothing.
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

    // A connection failed; error is Qt's text for it, or the program's.
    virtual void ConnectionFailed(const CAtlString& error) {
        if (connectionFailed_)
            connectionFailed_(error);
    }
    virtual void ProxyAuthCanceled() {
        if (proxyAuthCanceled_)
            proxyAuthCanceled_();
    }
    // The proxy at host and port wants credentials; it has refused those that userName and password hold.
    // True when what they hold afterwards is to be tried; false without a callback.
    virtual bool ProxyAuthRequired(const CAtlString& host, int port, CAtlString& userName,
                                   CAtlString& password) {
        return proxyAuthRequired_ && proxyAuthRequired_(host, port, userName, password);
    }
    // Bytes read so far, and in all (0 or less when unknown).
    virtual void DataReadProgress(int done, int total) {
        if (progress_)
            progress_(done, total);
    }

    const Route& GetRoute() const { return route_; }
    const CAtlString& GetUserName() const { return route_.credentials.userName; }
    const CAtlString& GetPassword() const { return route_.credentials.password; }
    void SetCredentials(const CAtlString& userName, const CAtlString& password) {
        route_.credentials = {userName, password};
    }
    const CAtlString& GetProxyHost() const { return route_.proxyHost; }
    int GetProxyPort() const { return route_.proxyPort; }
    // Through the proxy at host and port when host is not empty, else direct.
    void SetProxy(const CAtlString& host, int port) {
        route_.proxyHost = host;
        route_.proxyPort = port;
    }
    int GetProxyMode() const { return route_.IsDirect() ? DIRECT : THROUGH_PROXY; }

    void SetConnectionFailedCallback(const FailedCallback& callback) { connectionFailed_ = callback; }
    void SetProxyAuthCanceledCallback(const AuthCanceledCallback& callback) { proxyAuthCanceled_ = callback; }
    void SetProxyAuthRequiredCallback(const AuthRequiredCallback& callback) { proxyAuthRequired_ = callback; }
    void SetProgressCallback(const ProgressCallback& callback) { progress_ = callback; }

private:
    Route route_;
    FailedCallback connectionFailed_;
    AuthCanceledCallback proxyAuthCanceled_;
    AuthRequiredCallback proxyAuthRequired_;
    ProgressCallback progress_;
};
