// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/ConnectionInfo.h"

void ConnectionInfo::ConnectionFailed(const CAtlString& error) {
    if (connectionFailed_)
        connectionFailed_(error);
}

void ConnectionInfo::ProxyAuthCanceled() {
    if (proxyAuthCanceled_)
        proxyAuthCanceled_();
}

bool ConnectionInfo::ProxyAuthRequired(const CAtlString& host, int port, CAtlString& userName,
                                       CAtlString& password) {
    return proxyAuthRequired_ && proxyAuthRequired_(host, port, userName, password);
}

void ConnectionInfo::DataReadProgress(int done, int total) {
    if (progress_)
        progress_(done, total);
}

void ConnectionInfo::SetCredentials(const CAtlString& userName, const CAtlString& password) {
    userName_ = userName;
    password_ = password;
}

void ConnectionInfo::SetProxy(const CAtlString& host, int port) {
    proxyHost_ = host;
    proxyPort_ = port;
    proxyMode_ = host.IsEmpty() ? DIRECT : THROUGH_PROXY;
}
