// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/QtDownloader.h"

#include <QElapsedTimer>
#include <QFile>
#include <QUrl>
#include <algorithm>
#include <limits>

#include "net/QHttp.h"
#include "platform/text/ResultCodes.h"

using Culprit = TransferRecord::Culprit;
using Peer = CPeerMemory::Peer;
using ProxyScheme = QHttpResponseHeader::ProxyScheme;

namespace {

QNetworkProxy ToQt(const Route& route, const Credentials& credentials) {
    if (route.IsDirect())
        return QNetworkProxy(QNetworkProxy::NoProxy);
    // Nothing answers at port 0.
    const bool isPort = route.proxyPort > 0 && route.proxyPort <= std::numeric_limits<quint16>::max();
    return QNetworkProxy(QNetworkProxy::HttpProxy, route.proxyHost.ToQString(),
                         isPort ? static_cast<quint16>(route.proxyPort) : quint16{0},
                         credentials.userName.ToQString(), credentials.password.ToQString());
}

bool TakesCredentials(const Peer& proxy) {
    return proxy.scheme != ProxyScheme::NONE && proxy.scheme < ProxyScheme::NEGOTIATE;
}

// How a request logs in at the proxy.
ProxyScheme WayToLogIn(const Peer& proxy, bool isTicketShown) {
    if (isTicketShown)
        return ProxyScheme::NEGOTIATE;
    return TakesCredentials(proxy) ? proxy.scheme : ProxyScheme::NONE;
}

// What a proxy that lets no request pass wants, or why it got no ticket; empty for a password alone.
QString WishOf(const Peer& proxy) {
    if (proxy.scheme == ProxyScheme::NEGOTIATE)
        return proxy.noTicket.ToQString();
    if (proxy.scheme == ProxyScheme::UNUSABLE)
        return QtDownloader::tr("It offers no way to log in that this program can use");
    return proxy.noTicket.IsEmpty()
               ? QString()
               : QtDownloader::tr("It wants a valid Kerberos ticket, or a user name and password");
}

// Creates the file for its owner alone, in place of an earlier one. It never opens a file or follows a link
// that another user put there meanwhile; the file then stays closed.
void CreateAnew(QFile& file) {
    const auto create = [&file] {
        return file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered,
                         QFile::ReadOwner | QFile::WriteOwner);
    };
    if (!file.isOpen() && create())
        return;
    file.remove();
    create();
}

}  // namespace

QtDownloader::QtDownloader(const TransferBounds& bounds, const boost::shared_ptr<CTransferThreads>& threads)
    : QtDownloaderBase(threads), bounds_(bounds) {}

bool QtDownloader::CanFetch(const QUrl& address) {
    return address.isValid() && address.scheme() == QLatin1String("http");
}

int QtDownloader::Download(const CAtlString& url, const CAtlString& file) {
    record_.url = url;
    const QUrl address(url.ToQString());
    if (!CanFetch(address))
        return RESULT_FAILED;
    QElapsedTimer time;
    time.start();
    record_.proxyHost = GetRoute().proxyHost;
    record_.proxyPort = GetRoute().proxyPort;
    proxy_ = GetRoute().ProxyName();
    site_ = address.authority() + u'|' + proxy_;
    credentials_ = GetRoute().credentials;

    if (!IsAhead())
        connect(&Http(), &QHttp::dataReadProgress, this, &QtDownloader::DataReadProgressSignal,
                Qt::DirectConnection);
    Http().setBounds(bounds_);
    QFile target(file.ToQString());
    const int result = Transfer(address, target);
    Http().disconnect(this);

    record_.status = status_;
    record_.milliseconds = time.elapsed();
    record_.succeeded = result == RESULT_OK;
    return result;
}

int QtDownloader::Transfer(const QUrl& address, QFile& file) {
    if (IsAhead() && !GetRoute().IsDirect() && !Memory().Of(proxy_).isOpen) {
        wasHeld_ = true;
        return RESULT_ABORTED;
    }
    if (IsKnownToBeSilent())
        return RESULT_FAILED;
    Attempt(address, file);
    for (int attempts = 1; IsChallenged() && attempts < QHttp::MAX_CHALLENGES && MayBeAskedAgain();
         ++attempts) {
        NoteChallenge();
        // Without an answer nothing was sent, for want of a ticket, and the proxy may want nothing now.
        const bool isAsked = status_ != 0;
        if (isAsked && !HasCredentialsToTry() && !Memory().Of(proxy_).TakesTicket() && !AskForCredentials()) {
            BlameProxy();
            return IsCancelled() ? Judge(file) : RESULT_ABORTED;
        }
        Attempt(address, file);
    }
    if (!IsCancelled())
        NoteOutcome();
    SetCredentials(credentials_);
    return Judge(file);
}

void QtDownloader::Attempt(const QUrl& address, QFile& file) {
    areSent_ = HasCredentialsToTry();
    areTried_ = areTried_ || areSent_;
    const Peer proxy = Memory().Of(proxy_);
    isTicketShown_ = !areSent_ && proxy.TakesTicket();
    Http().setProxy(ToQt(GetRoute(), areSent_ ? credentials_ : Credentials()),
                    WayToLogIn(proxy, isTicketShown_));
    Http().setHost(address.host(), address.port(QHttp::DEFAULT_PORT));
    CreateAnew(file);
    Http().get(address.path(QUrl::FullyEncoded), &file, Cancelled());
    if (Http().header().statusCode() != 0)
        status_ = Http().header().statusCode();
    if (Http().error() == QHttp::Error::NO_TICKET)
        return;
    record_.isGarbled = Http().isGarbled();
    record_.bytes = Http().received();
    record_.error = CAtlString(Http().errorString());
    if (!record_.error.IsEmpty() && !IsAhead())
        emit ConnectionFailedSignal(record_.error);
}

bool QtDownloader::HasCredentialsToTry() const {
    const Peer proxy = Memory().Of(proxy_);
    // Only the transfer that the check waits for tries credentials that the proxy has not accepted yet.
    const bool areWelcome = IsAhead() ? credentials_ == proxy.accepted : !(credentials_ == proxy.refused);
    return !GetRoute().IsDirect() && !areTried_ && !credentials_.IsEmpty() && TakesCredentials(proxy) &&
           areWelcome;
}

bool QtDownloader::IsChallenged() const {
    const bool isOver = Http().error() != QHttp::Error::NONE && Http().error() != QHttp::Error::NETWORK;
    return Http().error() == QHttp::Error::NO_TICKET ||
           (status_ == QHttpResponseHeader::PROXY_AUTHENTICATION_REQUIRED && !GetRoute().IsDirect() &&
            !isOver);
}

bool QtDownloader::MayBeAskedAgain() const {
    // To log in by NTLM takes one challenge, and a second one refuses.
    const int needed = Memory().Of(proxy_).scheme == ProxyScheme::NTLM ? 2 : 1;
    return Http().challenges() + needed <= QHttp::MAX_CHALLENGES;
}

void QtDownloader::NoteChallenge() {
    const ProxyScheme scheme = Http().header().proxyScheme();
    Memory().Update(proxy_, [&](Peer& proxy) {
        proxy.isOpen = false;
        proxy.hasAnswered = proxy.hasAnswered || status_ != 0;
        if (isTicketShown_) {
            const QString error = Http().errorString();
            proxy.noTicket = CAtlString(error.isEmpty() ? QHttp::NoTicket() : error);
            return;
        }
        // Credentials that were sent in another way than the proxy now wants are not refused.
        if (areSent_ && scheme <= proxy.scheme && scheme != ProxyScheme::NONE)
            proxy.refused = credentials_;
        else if (scheme > proxy.scheme)
            areTried_ = false;
        // Once a proxy has asked for a better scheme, it never gets the password readably.
        proxy.scheme = std::max(proxy.scheme, scheme);
        proxy.offersNegotiate = proxy.offersNegotiate || Http().header().offersNegotiate();
    });
}

bool QtDownloader::AskForCredentials() {
    wasHeld_ = IsAhead();
    const Peer proxy = Memory().Of(proxy_);
    Credentials given = areTried_ || proxy.refused == credentials_ ? credentials_ : Credentials();
    if (IsAhead() || !TakesCredentials(proxy) ||
        !RequestProxyAuth(GetRoute().proxyHost, GetRoute().proxyPort, given.userName, given.password))
        return false;
    credentials_ = given;
    areTried_ = false;
    Memory().Update(proxy_, [](Peer& peer) { peer.refused = {}; });
    return true;
}

bool QtDownloader::IsKnownToBeSilent() {
    const CAtlString proxys = GetRoute().IsDirect() ? CAtlString() : Memory().Of(proxy_).silence;
    const CAtlString silence = proxys.IsEmpty() ? Memory().Of(site_).silence : proxys;
    if (silence.IsEmpty())
        return false;
    record_.culprit = proxys.IsEmpty() ? Culprit::SITE : Culprit::PROXY;
    record_.error = silence;
    if (!IsAhead())
        emit ConnectionFailedSignal(record_.error);
    return true;
}

void QtDownloader::NoteOutcome() {
    const bool isAnswered = Http().header().statusCode() != 0;
    const bool isChallenged = status_ == QHttpResponseHeader::PROXY_AUTHENTICATION_REQUIRED;
    const auto digest = Http().header().digest();
    const bool isRefusal =
        Http().error() == QHttp::Error::NONE ||
        (Http().error() == QHttp::Error::ASKED_TOO_OFTEN && !(digest && digest->IsStale()));
    bool isProxys = false;
    if (!GetRoute().IsDirect())
        Memory().Update(proxy_, [&](Peer& proxy) {
            proxy.hasAnswered = proxy.hasAnswered || isAnswered;
            const bool isPassed = isAnswered && !isChallenged;
            // A transfer that was started ahead does not open the proxy for others.
            proxy.isOpen = isPassed && (proxy.isOpen || !IsAhead());
            if (isPassed && areSent_)
                proxy.accepted = credentials_;
            else if (areSent_ && isChallenged && isRefusal)
                proxy.refused = credentials_;
            isProxys = isChallenged || !Http().wasSent() || !proxy.hasAnswered;
        });
    record_.culprit = Culprit::SITE;
    if (isProxys)
        BlameProxy();
    if (Http().error() == QHttp::Error::NOT_WRITTEN)
        record_.culprit = Culprit::COMPUTER;
    if (Http().error() != QHttp::Error::TOO_LATE && Http().error() != QHttp::Error::UNREACHABLE)
        return;
    Memory().Update(isProxys ? proxy_ : site_, [this](Peer& peer) { peer.silence = record_.error; });
}

void QtDownloader::BlameProxy() {
    record_.culprit = Culprit::PROXY;
    if (record_.error.IsEmpty())
        record_.error = CAtlString(WishOf(Memory().Of(proxy_)));
    if (record_.error.ToQString() == QHttp::NoAnswer())
        record_.error = CAtlString(tr("No answer"));
}

int QtDownloader::Judge(QFile& file) {
    // A file of this name then belongs to somebody else.
    if (!file.isOpen())
        return RESULT_FAILED;
    const bool isWhole = Http().error() == QHttp::Error::NONE;
    if (isWhole && status_ <= QHttpResponseHeader::OK && record_.bytes > 0)
        return RESULT_OK;
    if (status_ > QHttpResponseHeader::OK || record_.bytes > 0)
        file.remove();
    return RESULT_FAILED;
}
