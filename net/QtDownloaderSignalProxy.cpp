// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/QtDownloaderSignalProxy.h"

#include "net/ConnectionInfo.h"

void QtDownloaderSignalProxy::ConnectionFailedSlot(CAtlString error) {
    receiver_->ConnectionFailed(error);
}

void QtDownloaderSignalProxy::ProxyAuthCanceledSlot() {
    receiver_->ProxyAuthCanceled();
}

void QtDownloaderSignalProxy::DataReadProgressSlot(int done, int total) {
    receiver_->DataReadProgress(done, total);
}

bool QtDownloaderSignalProxy::ProxyAuthRequiredSlot(CAtlString host, int port, CAtlString userName,
                                                    CAtlString password) {
    const bool answered = receiver_->ProxyAuthRequired(host, port, userName, password);
    emit ProxyAuthRequestDoneSignal(answered, userName, password);
    return answered;
}
