// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A transfer on another thread, and its messages to the thread that asked for it.
#pragma once

#include "net/CTransferThreads.h"
#include "net/ConnectionInfo.h"
#include "net/events/CWakingFlag.h"
#include "platform/text/CAtlString.h"
#include "platform/text/ResultCodes.h"

#include <QObject>
#include <boost/shared_ptr.hpp>

class QtDownloaderBase;

// Lives on the asking thread and calls the notifications of a ConnectionInfo there; each slot calls the
// notification of its name. QtDownloaderBase connects its signals and slots, queued.
class QtDownloaderSignalProxy : public QObject {
    Q_OBJECT
    friend class QtDownloaderBase;

public:
    explicit QtDownloaderSignalProxy(QObject* parent) : QObject(parent) {}

    // The receiver of the notifications; not owned.
    void SetHandler(ConnectionInfo* receiver) { receiver_ = receiver; }

signals:
    // Whether the credentials are to be tried.
    void ProxyAuthRequestDoneSignal(bool, const CAtlString& userName, const CAtlString& password);

protected slots:
    void ConnectionFailedSlot(const CAtlString& error) { receiver_->ConnectionFailed(error); }
    void ProxyAuthCanceledSlot() { receiver_->ProxyAuthCanceled(); }
    void DataReadProgressSlot(int done, int total) { receiver_->DataReadProgress(done, total); }
    // Asks for credentials, which may show a dialog, and sends the answer back.
    bool ProxyAuthRequiredSlot(const CAtlString& host, int port, const CAtlString& userName,
                               const CAtlString& password);

private:
    ConnectionInfo* receiver_ = nullptr;
};

// One object serves one transfer. It lives on the asking thread, which serves its events while it waits in
// DownloadOnThread or Finish; Download runs on the transfer's thread. Notifications reach the ConnectionInfo
// on the asking thread, which must be the GUI thread when one of them opens a dialog.
class QtDownloaderBase : public QObject {
    Q_OBJECT

public:
    // Transfers share the threads; without threads, this transfer makes one of its own.
    explicit QtDownloaderBase(const boost::shared_ptr<CTransferThreads>& threads = {});

    // Fetches url into file with the settings of info, which must outlive the call and gets the credentials
    // that were used. Returns one of the RESULT_ codes.
    int DownloadOnThread(const CAtlString& url, const CAtlString& file, ConnectionInfo* info);

    // The same in two steps: Start returns at once, Finish waits and returns the result.
    void Start(const CAtlString& url, const CAtlString& file, ConnectionInfo* info);
    int Finish();
    // Starts a transfer without notifications: it fails where another would ask for credentials. It gets its
    // thread after those that already wait for one.
    void StartAhead(const CAtlString& url, const CAtlString& file, const Route& route);
    // Ends a started transfer: Finish returns soon, with a failure unless the transfer had ended before. A
    // question that it has asked gets no answer.
    void Cancel();
    // The same, and waits for its end without serving events. A transfer that was started and not finished
    // must be abandoned before its destruction.
    void Abandon();

signals:
    void ConnectionFailedSignal(const CAtlString& error);
    void ProxyAuthCanceledSignal();
    void ProxyAuthRequiredSignal(const CAtlString& host, int port, const CAtlString& userName,
                                 const CAtlString& password);
    void DataReadProgressSignal(int done, int total);

protected:
    // The transfer itself, on its thread.
    virtual int Download(const CAtlString& url, const CAtlString& file) = 0;
    // On the transfer's thread: asks for the credentials of a proxy, and waits however long the user takes.
    // userName and password hold what the proxy has refused; true when they now hold others to try.
    bool RequestProxyAuth(const CAtlString& host, int port, CAtlString& userName, CAtlString& password);
    bool IsCancelled() const { return cancelled_.IsSet(); }
    // Cancel sets it.
    CWakingFlag& Cancelled() { return cancelled_; }
    bool HasEnded() const { return ended_.IsSet(); }
    // StartAhead started it. On the transfer's thread.
    bool IsAhead() const { return !info_; }
    QHttp& Http() const { return *http_; }
    CPeerMemory& Memory() const { return threads_->Memory(); }
    const Route& GetRoute() const { return route_; }
    // Finish gives these credentials to the ConnectionInfo.
    void SetCredentials(const Credentials& credentials) { route_.credentials = credentials; }

protected slots:
    virtual void ProxyAuthRequestDoneSlot(bool ret, const CAtlString& userName, const CAtlString& password);

private:
    // Makes the forwarder, and lets it pass on the signals.
    void ConnectForwarder();
    void Run(const CAtlString& url, const CAtlString& file);

    // The receiver without callbacks, for a transfer that was cancelled.
    ConnectionInfo nobody_;
    // A child; null until Start, since a transfer that was started ahead notifies nobody.
    QtDownloaderSignalProxy* forwarder_ = nullptr;
    boost::shared_ptr<CTransferThreads> threads_;
    CWakingFlag cancelled_;
    ConnectionInfo* info_ = nullptr;
    Route route_;
    QHttp* http_ = nullptr;
    int result_ = RESULT_FAILED;
    CWakingFlag ended_{true};
    CWakingFlag answerReceived_;
    bool answer_ = false;
    CAtlString answeredUserName_;
    CAtlString answeredPassword_;
};
