// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Brings what happens on a transfer's thread to the thread that asked for it.
#pragma once

#include "platform/CAtlString.h"

#include <QObject>

class ConnectionInfo;
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
