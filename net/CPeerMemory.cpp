// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/CPeerMemory.h"

#include <QUrl>

#include <netdb.h>
#include <sys/socket.h>

#include "net/DetachedWork.h"

namespace {

// Blocks as long as the system's resolver takes. Keeps the resolver's order (RFC 6724).
QList<QHostAddress> LookUp(const QByteArray& host) {
    QList<QHostAddress> addresses;
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_ADDRCONFIG;
    addrinfo* found = nullptr;
    if (getaddrinfo(host.constData(), nullptr, &hints, &found) != 0)
        return addresses;
    for (const addrinfo* each = found; each; each = each->ai_next)
        addresses << QHostAddress(each->ai_addr);
    freeaddrinfo(found);
    return addresses;
}

}  // namespace

CPeerMemory::Peer CPeerMemory::Of(const QString& name) const {
    const std::lock_guard lock(mutex_);
    const auto found = peers_.find(name);
    return found == peers_.end() ? Peer() : found->second;
}

QFuture<QList<QHostAddress>> CPeerMemory::AddressesOf(const QString& host) {
    const std::lock_guard lock(mutex_);
    const auto [found, isNew] = addresses_.try_emplace(host);
    const QHostAddress written(host);
    if (isNew && !written.isNull()) {
        found->second = QtFuture::makeReadyFuture(QList<QHostAddress>{written});
    } else if (isNew) {
        found->second = StartDetached([name = QUrl::toAce(host)] { return LookUp(name); });
    }
    return found->second;
}

void CPeerMemory::EndCheck() {
    const std::lock_guard lock(mutex_);
    addresses_.clear();
    for (auto& [name, peer] : peers_) {
        peer.silence.Empty();
        peer.hasAnswered = false;
        peer.noTicket.Empty();
        // The ticket may have ended: one request goes first again.
        peer.isOpen = peer.isOpen && !peer.offersNegotiate;
    }
}
