// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/QtDownloaderBase.h"

#include <QCoreApplication>
#include <boost/make_shared.hpp>

bool QtDownloaderSignalProxy::ProxyAuthRequiredSlot(const CAtlString& host, int port,
                                                    const CAtlString& userName, const CAtlString& password) {
    CAtlString givenUserName(userName);
    CAtlString givenPassword(password);
    const bool answered = receiver_->ProxyAuthRequired(host, port, givenUserName, givenPassword);
    emit ProxyAuthRequestDoneSignal(answered, givenUserName, givenPassword);
    return answered;
}

QtDownloaderBase::QtDownloaderBase(const boost::shared_ptr<CTransferThreads>& threads)
    : threads_(threads ? threads : boost::make_shared<CTransferThreads>(1)) {}

void QtDownloaderBase::ConnectForwarder() {
    using Base = QtDownloaderBase;
    using Forwarder = QtDownloaderSignalProxy;
    constexpr auto QUEUED = Qt::QueuedConnection;
    forwarder_ = new QtDownloaderSignalProxy(this);
    connect(this, &Base::ProxyAuthCanceledSignal, forwarder_, &Forwarder::ProxyAuthCanceledSlot, QUEUED);
    connect(this, &Base::ConnectionFailedSignal, forwarder_, &Forwarder::ConnectionFailedSlot, QUEUED);
    connect(this, &Base::DataReadProgressSignal, forwarder_, &Forwarder::DataReadProgressSlot, QUEUED);
    connect(this, &Base::ProxyAuthRequiredSignal, forwarder_, &Forwarder::ProxyAuthRequiredSlot, QUEUED);
    connect(forwarder_, &Forwarder::ProxyAuthRequestDoneSignal, this, &Base::ProxyAuthRequestDoneSlot,
            QUEUED);
}

int QtDownloaderBase::DownloadOnThread(const CAtlString& url, const CAtlString& file, ConnectionInfo* info) {
    Start(url, file, info);
    return Finish();
}

void QtDownloaderBase::Start(const CAtlString& url, const CAtlString& file, ConnectionInfo* info) {
    info_ = info;
    if (!forwarder_)
        ConnectForwarder();
    forwarder_->SetHandler(info);
    route_ = info->GetRoute();
    Run(url, file);
}

void QtDownloaderBase::StartAhead(const CAtlString& url, const CAtlString& file, const Route& route) {
    route_ = route;
    Run(url, file);
}

void QtDownloaderBase::Run(const CAtlString& url, const CAtlString& file) {
    ended_.Clear();
    const auto work = [this, url, file](QHttp& http) {
        http_ = &http;
        result_ = Download(url, file);
    };
    threads_->Add(work, ended_, !IsAhead());
}

int QtDownloaderBase::Finish() {
    ended_.Wait();
    if (info_ && !IsCancelled()) {
        // Notifications from before the end may still lie in this thread's queue.
        QCoreApplication::sendPostedEvents(forwarder_);
        info_->SetCredentials(GetRoute().credentials.userName, GetRoute().credentials.password);
    }
    return result_;
}

void QtDownloaderBase::Cancel() {
    if (forwarder_)
        forwarder_->SetHandler(&nobody_);
    cancelled_.Set();
    answerReceived_.Set();
}

void QtDownloaderBase::Abandon() {
    Cancel();
    ended_.Block();
}

bool QtDownloaderBase::RequestProxyAuth(const CAtlString& host, int port, CAtlString& userName,
                                        CAtlString& password) {
    answerReceived_.Clear();
    if (IsCancelled())
        return false;
    emit ProxyAuthRequiredSignal(host, port, userName, password);
    answerReceived_.Wait();
    if (IsCancelled())
        return false;
    userName = answeredUserName_;
    password = answeredPassword_;
    return answer_;
}

void QtDownloaderBase::ProxyAuthRequestDoneSlot(bool ret, const CAtlString& userName,
                                                const CAtlString& password) {
    answer_ = ret;
    answeredUserName_ = userName;
    answeredPassword_ = password;
    answerReceived_.Set();
}
