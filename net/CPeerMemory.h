// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the hosts and proxies of a run have shown of themselves.
#pragma once

#include "net/ConnectionInfo.h"
#include "net/QHttpResponseHeader.h"

#include <QFuture>
#include <QHostAddress>
#include <QList>
#include <QString>
#include <map>
#include <mutex>

// Shared by all transfers of a downloader; any thread.
class CPeerMemory {
public:
    using ProxyScheme = QHttpResponseHeader::ProxyScheme;

    // What is known of a host, or of a proxy.
    struct Peer {
        // It let a request run into a time-out in this check.
        bool isSilent = false;
        // It has answered a request in this check.
        bool hasAnswered = false;
        // Of a proxy: it let the last request pass.
        bool isOpen = false;
        // Of a proxy: the best that it has asked for.
        ProxyScheme scheme = ProxyScheme::NONE;
        // Of a proxy: the credentials that it took last, and those that it refused last.
        Credentials accepted;
        Credentials refused;
    };

    Peer Of(const QString& name) const;
    // Calls change with what is known of the peer, while no other thread looks at it.
    template <typename Change>
    void Update(const QString& name, const Change& change) {
        const std::lock_guard lock(mutex_);
        change(peers_[name]);
    }
    // The addresses of a host, looked up once for all that ask; empty when it has none. The look-up cannot be
    // stopped, so it runs on a thread that nobody waits for, not even the end of the process: Qt's own does
    // (QHostInfo), and the system tries a dead name server for up to half a minute.
    QFuture<QList<QHostAddress>> AddressesOf(const QString& host);
    // The check is over: names are looked up, and silent peers are asked again.
    void EndCheck();

private:
    mutable std::mutex mutex_;
    std::map<QString, Peer> peers_;
    std::map<QString, QFuture<QList<QHostAddress>>> addresses_;
};
