// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// How the hosts and proxies of a run have behaved.
#pragma once

#include "net/ConnectionInfo.h"
#include "net/QHttpResponseHeader.h"

#include <QFuture>
#include <QHostAddress>
#include <QList>
#include <QString>
#include <map>
#include <mutex>

// All transfers of a downloader share it; any thread.
class CPeerMemory {
public:
    using ProxyScheme = QHttpResponseHeader::ProxyScheme;

    // A host or a proxy.
    struct Peer {
        // Empty, or why this check asks it no more: it let a request wait in vain.
        CAtlString silence;
        // It has answered a request in this check.
        bool hasAnswered = false;

        // The members from here on are for a proxy. It let the last request pass.
        bool isOpen = false;
        // It takes the user's ticket; and, unless empty, why this check shows it none.
        bool offersNegotiate = false;
        CAtlString noTicket;
        // The highest scheme that it has asked for.
        ProxyScheme scheme = ProxyScheme::NONE;
        // The last credentials that it accepted, and the last that it refused.
        Credentials accepted;
        Credentials refused;

        bool TakesTicket() const { return offersNegotiate && noTicket.IsEmpty(); }
    };

    Peer Of(const QString& name) const;
    // Calls change with the peer, under the lock.
    template <typename Change>
    void Update(const QString& name, const Change& change) {
        const std::lock_guard lock(mutex_);
        change(peers_[name]);
    }
    // The addresses of a host, looked up once for all transfers; empty when the host has none. When the
    // name server is dead, a look-up takes half a minute; unlike QHostInfo's, it does not keep the process
    // from ending.
    QFuture<QList<QHostAddress>> AddressesOf(const QString& host);
    // The next check looks names up, asks silent peers and tries the ticket again.
    void EndCheck();

private:
    mutable std::mutex mutex_;
    std::map<QString, Peer> peers_;
    std::map<QString, QFuture<QList<QHostAddress>>> addresses_;
};
