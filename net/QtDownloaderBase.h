// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A transfer on a thread of its own, and its talk with the thread that asked for it.
#pragma once

#include "net/QThreadWithLoop.h"
#include "net/WakingFlag.h"
#include "platform/CAtlString.h"

#include <QObject>
#include <atomic>
#include <memory>

class ConnectionInfo;
class QtDownloaderSignalProxy;

// One object serves one transfer. It lives on the asking thread, which waits in DownloadOnThread with its
// events flowing; Download runs on the transfer's thread. Notifications reach the ConnectionInfo on the
// asking thread, so a dialog that one of them opens is in the right place when that is the GUI thread.
class QtDownloaderBase : public QObject {
    Q_OBJECT

public:
    QtDownloaderBase();

    // Fetches url into file with the settings of info, which must outlive the call. Returns one of the
    // RESULT_ codes.
    int DownloadOnThread(const CAtlString& url, const CAtlString& file, ConnectionInfo* info);

    // The same in two steps: Start returns at once, Finish waits, with the events of the asking thread
    // flowing, and returns the result. Between them that thread must serve its events for the transfer to
    // come on.
    void Start(const CAtlString& url, const CAtlString& file, ConnectionInfo* info);
    int Finish();
    // Ends a started transfer, whose result nobody wants any more: Finish returns soon, with a failure unless
    // the transfer had ended before.
    void Cancel();
    // The same, and waits for its end without serving events. Needed before the destruction of a transfer
    // that was not finished.
    void Abandon();
    // After Start: the transfer has not come to its end.
    bool IsRunning() const { return thread_->isRunning(); }

signals:
    // On the asking thread, when a started transfer has ended and all that it had to tell has been told.
    void Ended();
    void ConnectionFailedSignal(const CAtlString& error);
    void ProxyAuthCanceledSignal();
    void ProxyAuthRequiredSignal(const CAtlString& host, int port, const CAtlString& userName,
                                 const CAtlString& password);
    void DataReadProgressSignal(int done, int total);

protected:
    // The transfer itself, on its thread.
    virtual int Download(const CAtlString& url, const CAtlString& file) = 0;
    // On the transfer's thread: asks for the credentials of the proxy at host and port and waits for the
    // answer, however long the user takes. Whether userName and password, which it replaces, are to be tried.
    bool RequestProxyAuth(const CAtlString& host, int port, CAtlString& userName, CAtlString& password);
    ConnectionInfo& Info() const { return *info_; }
    // Wakes the transfer's thread from whatever it waits for; it looks at IsCancelled then.
    virtual void WakeUp() { answerReceived_.Set(); }
    bool IsCancelled() const { return cancelled_; }

protected slots:
    virtual void ProxyAuthRequestDoneSlot(bool ret, const CAtlString& userName, const CAtlString& password);

private:
    QtDownloaderSignalProxy* forwarder_;
    std::unique_ptr<QThreadWithLoop> thread_;
    std::atomic<bool> cancelled_ = false;
    ConnectionInfo* info_ = nullptr;
    WakingFlag answerReceived_;
    bool answer_ = false;
    CAtlString answeredUserName_;
    CAtlString answeredPassword_;
};
