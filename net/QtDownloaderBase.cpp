// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/QtDownloaderBase.h"

#include <QCoreApplication>

#include "net/QtDownloaderSignalProxy.h"

QtDownloaderBase::QtDownloaderBase() : forwarder_(new QtDownloaderSignalProxy(this)) {
    static const int registered = qRegisterMetaType<CAtlString>("CAtlString");
    Q_UNUSED(registered);

    using Base = QtDownloaderBase;
    using Forwarder = QtDownloaderSignalProxy;
    connect(this, &Base::ProxyAuthCanceledSignal, forwarder_, &Forwarder::ProxyAuthCanceledSlot,
            Qt::QueuedConnection);
    connect(this, &Base::ConnectionFailedSignal, forwarder_, &Forwarder::ConnectionFailedSlot,
            Qt::QueuedConnection);
    connect(this, &Base::DataReadProgressSignal, forwarder_, &Forwarder::DataReadProgressSlot,
            Qt::QueuedConnection);
    connect(this, &Base::ProxyAuthRequiredSignal, forwarder_, &Forwarder::ProxyAuthRequiredSlot,
            Qt::QueuedConnection);
    connect(forwarder_, &Forwarder::ProxyAuthRequestDoneSignal, this, &Base::ProxyAuthRequestDoneSlot,
            Qt::QueuedConnection);
}

int QtDownloaderBase::DownloadOnThread(const CAtlString& url, const CAtlString& file, ConnectionInfo* info) {
    Start(url, file, info);
    return Finish();
}

void QtDownloaderBase::Start(const CAtlString& url, const CAtlString& file, ConnectionInfo* info) {
    info_ = info;
    forwarder_->SetHandler(info);
    thread_ = std::make_unique<QThreadWithLoop>([this, url, file] { return Download(url, file); });
    connect(thread_.get(), &QThread::finished, this, &QtDownloaderBase::Ended, Qt::QueuedConnection);
    thread_->start(QThread::InheritPriority);
}

int QtDownloaderBase::Finish() {
    thread_->WaitWithEvents();
    // The thread's end is known at once; what was told before it may still lie in this thread's queue. So may
    // what other transfers tell, which cannot end before it is heard: without this they would stand still as
    // long as results lie ready. A question that nobody waits for any more stays there.
    if (!IsCancelled())
        QCoreApplication::sendPostedEvents();
    return thread_->GetResult();
}

void QtDownloaderBase::Cancel() {
    cancelled_ = true;
    WakeUp();
}

void QtDownloaderBase::Abandon() {
    Cancel();
    thread_->wait();
}

bool QtDownloaderBase::RequestProxyAuth(const CAtlString& host, int port, CAtlString& userName,
                                        CAtlString& password) {
    answerReceived_.Clear();
    if (IsCancelled())
        answerReceived_.Set();
    else
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
