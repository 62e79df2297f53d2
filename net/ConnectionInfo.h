// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The settings of one transfer, and the receiver of its notifications.
#pragma once

#include "platform/text/CAtlString.h"

#include <QString>
#include <boost/function.hpp>

// The user name and password for a proxy.
struct Credentials {
    CAtlString userName;
    CAtlString password;

    bool IsEmpty() const { return userName.IsEmpty(); }
    bool operator==(const Credentials& other) const = default;
};

// How a transfer reaches its server.
struct Route {
    // Empty for a direct connection.
    CAtlString proxyHost;
    int proxyPort = 0;
    Credentials credentials;

    bool IsDirect() const { return proxyHost.IsEmpty(); }
    // The name under which CPeerMemory knows the proxy.
    QString ProxyName() const { return proxyHost.ToQString() + u':' + QString::number(proxyPort); }
    bool operator==(const Route& other) const = default;
};

// GUI thread only: a transfer takes a copy of the route along. A notification without a callback is ignored.
class ConnectionInfo {
public:
    using FailedCallback = boost::function<void(CAtlString)>;
    using AuthCanceledCallback = boost::function<void()>;
    using AuthRequiredCallback = boost::function<bool(const CAtlString&, int, CAtlString&, CAtlString&)>;
    using ProgressCallback = boost::function<void(int, int)>;

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
    // True when the transfer is to try what they hold afterwards; false without a callback.
    virtual bool ProxyAuthRequired(const CAtlString& host, int port, CAtlString& userName,
                                   CAtlString& password) {
        return proxyAuthRequired_ && proxyAuthRequired_(host, port, userName, password);
    }
    // Bytes read so far, and in total (0 or less when unknown).
    virtual void DataReadProgress(int done, int total) {
        if (progress_)
            progress_(done, total);
    }

    const Route& GetRoute() const { return route_; }
    void SetCredentials(const CAtlString& userName, const CAtlString& password) {
        route_.credentials = {userName, password};
    }
    // An empty host means a direct connection.
    void SetProxy(const CAtlString& host, int port) {
        route_.proxyHost = host;
        route_.proxyPort = port;
    }

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
