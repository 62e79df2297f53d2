// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/CAheadTransfer.h"

#include "platform/FileSystem.h"

CAheadTransfer::CAheadTransfer(const CAtlString& url, const CVardoFilePath& file,
                               const ConnectionInfo& settings, const TransferBounds& bounds,
                               const EndedCallback& ended)
    : ConnectionInfo(settings), url_(url), file_(file), transfer_(bounds) {
    QObject::connect(&transfer_, &QtDownloaderBase::Ended, &transfer_, [this, ended] { ended(*this); });
    transfer_.Start(url_, file_.GetFilePathString(), this);
}

CAheadTransfer::~CAheadTransfer() {
    if (isRunning_)
        transfer_.Abandon();
    if (!file_.IsEmpty())
        file_.Delete();
}

int CAheadTransfer::Finish() {
    const int result = transfer_.Finish();
    isRunning_ = false;
    return result;
}

bool CAheadTransfer::CanBeTrusted(const ConnectionInfo& settings) const {
    return !wasAsked_ && GetProxyHost().Compare(settings.GetProxyHost()) == 0 &&
           GetProxyPort() == settings.GetProxyPort() && GetUserName().Compare(settings.GetUserName()) == 0 &&
           GetPassword().Compare(settings.GetPassword()) == 0;
}

void CAheadTransfer::Report(ConnectionInfo& receiver) const {
    if (done_ > 0)
        receiver.DataReadProgress(done_, total_);
    if (!error_.IsEmpty())
        receiver.ConnectionFailed(error_);
}

CAtlString CAheadTransfer::HandOut(const CVardoFilePath& target) {
    const CAtlString own = file_.GetFilePathString();
    file_ = CVardoFilePath();
    const bool renamed = !target.IsEmpty() && FileSystem::RenameToFree(own, target.GetFilePathString());
    return renamed ? target.GetFilePathString() : own;
}

void CAheadTransfer::ConnectionFailed(const CAtlString& error) {
    error_ = error;
}

bool CAheadTransfer::ProxyAuthRequired(const CAtlString& /*host*/, int /*port*/, CAtlString& /*userName*/,
                                       CAtlString& /*password*/) {
    wasAsked_ = true;
    return false;
}

void CAheadTransfer::DataReadProgress(int done, int total) {
    done_ = done;
    total_ = total;
}
