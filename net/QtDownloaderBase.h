// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A transfer on a thread of its own, and its talk with the thread that asked for it.
#pragma once

#include "net/CTransferThreads.h"
#include "net/ConnectionInfo.h"
#include "net/events/WakingFlag.h"
#include "platform/text/CAtlString.h"

#include <QObject>
#include <boost/shared_ptr.hpp>

class QtDownloaderBase;

// Lives on the asking thread and calls the notifications of a ConnectionInfo there; each slot stands for the
// notification of its name. Its signals and slots are connected, queued, by QtDownloaderBase.
class QtDownloaderSignalProxy : public QObject {
    Q_OBJECT
    friend class QtDownloaderBase;

public:
    explicit QtDownloaderSignalProxy(QObject* parent) : QObject(parent) {}

    // Whose notifications are called; not owned.
    void SetHandler(ConnectionInfo* receiver) { receiver_ = receiver; }

signals:
    // Whether the credentials are to be tried.
    void ProxyAuthRequestDoneSignal(bool, const CAtlString& userName, const CAtlString& password);

protected slots:
    void ConnectionFailedSlot(const CAtlString& error);
    void ProxyAuthCanceledSlot();
    void DataReadProgressSlot(int done, int total);
    // Asks for credentials, which may show a dialog, and sends the answer back.
    bool ProxyAuthRequiredSlot(const CAtlString& host, int port, const CAtlString& userName,
                               const CAtlString& password);

private:
    ConnectionInfo* receiver_ = nullptr;
};

// One object serves one transfer. It lives on the asking thread, which waits in DownloadOnThread or Finish
// with its events flowing; Download runs on the transfer's thread. Notifications reach the ConnectionInfo on
// the asking thread, so a dialog that one of them opens is in the right place when that is the GUI thread.
class QtDownloaderBase : public QObject {
    Q_OBJECT

public:
    // The threads are shared with other transfers; without any, the transfer has one of its own.
    explicit QtDownloaderBase(const boost::shared_ptr<CTransferThreads>& threads = {});

    // Fetches url into file with the settings of info, which must outlive the call and gets the credentials
    // that were used. Returns one of the RESULT_ codes.
    int DownloadOnThread(const CAtlString& url, const CAtlString& file, ConnectionInfo* info);

    // The same in two steps: Start returns at once, Finish waits and returns the result.
    void Start(const CAtlString& url, const CAtlString& file, ConnectionInfo* info);
    int Finish();
    // Starts a transfer that tells nobody anything and asks nobody: it fails where another would ask. It
    // waits for its turn, behind those that were started before.
    void StartAhead(const CAtlString& url, const CAtlString& file, const Route& route);
    // Ends a started transfer, whose result nobody wants any more: Finish returns soon, with a failure unless
    // the transfer had ended before. A question that it has asked is not answered any more.
    void Cancel();
    // The same, and waits for its end without serving events. Needed before the destruction of a transfer
    // that was started and not finished.
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
    // On the transfer's thread: asks for the credentials of the proxy at host and port and waits for the
    // answer, however long the user takes. userName and password say what the proxy has refused. Whether what
    // replaces them is to be tried.
    bool RequestProxyAuth(const CAtlString& host, int port, CAtlString& userName, CAtlString& password);
    bool IsCancelled() const { return cancelled_.IsSet(); }
    // What Cancel sets.
    WakingFlag& Cancelled() { return cancelled_; }
    bool HasEnded() const { return ended_.IsSet(); }
    // On the transfer's thread.
    bool IsAhead() const { return !info_; }
    QHttp& Http() const { return *http_; }
    CPeerMemory& Memory() const { return threads_->Memory(); }
    const Route& GetRoute() const { return route_; }
    // The credentials that info gets at the end.
    void SetCredentials(const Credentials& credentials) { route_.credentials = credentials; }

protected slots:
    virtual void ProxyAuthRequestDoneSlot(bool ret, const CAtlString& userName, const CAtlString& password);

private:
    void Run(const CAtlString& url, const CAtlString& file);

    // Whom a cancelled transfer tells.
    ConnectionInfo nobody_;
    QtDownloaderSignalProxy* forwarder_;
    boost::shared_ptr<CTransferThreads> threads_;
    WakingFlag cancelled_;
    ConnectionInfo* info_ = nullptr;
    Route route_;
    QHttp* http_ = nullptr;
    int result_;
    WakingFlag ended_{true};
    WakingFlag answerReceived_;
    bool answer_ = false;
    CAtlString answeredUserName_;
    CAtlString answeredPassword_;
};
