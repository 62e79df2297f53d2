// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/QtDownloaderSignalProxy.h"

#include "net/ConnectionInfo.h"

void QtDownloaderSignalProxy::ConnectionFailedSlot(const CAtlString& error) {
    receiver_->ConnectionFailed(error);
}

void QtDownloaderSignalProxy::ProxyAuthCanceledSlot() {
    receiver_->ProxyAuthCanceled();
}

void QtDownloaderSignalProxy::DataReadProgressSlot(int done, int total) {
    receiver_->DataReadProgress(done, total);
}

bool QtDownloaderSignalProxy::ProxyAuthRequiredSlot(const CAtlString& host, int port,
                                                    const CAtlString& userName, const CAtlString& password) {
    CAtlString givenUserName(userName);
    CAtlString givenPassword(password);
    const bool answered = receiver_->ProxyAuthRequired(host, port, givenUserName, givenPassword);
    emit ProxyAuthRequestDoneSignal(answered, givenUserName, givenPassword);
    return answered;
}
