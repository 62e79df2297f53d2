// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/QHttp.h"

#include <QFutureWatcher>
#include <QIODevice>
#include <QRandomGenerator>
#include <algorithm>
#include <limits>

#include "net/CHttpAnswerParser.h"
#include "net/CPeerMemory.h"
#include "net/DetachedWork.h"
#include "net/HostConnection.h"
#include "net/KerberosTicket.h"

using ProxyScheme = QHttpResponseHeader::ProxyScheme;

namespace {

int ToInt(qint64 bytes) {
    return static_cast<int>(std::clamp<qint64>(bytes, 0, std::numeric_limits<int>::max()));
}

// RFC 9112, 3.2; a proxy gets the whole address. QUrl encodes every byte that could end a line.
QByteArray TargetOf(const QUrl& url, bool isForProxy) {
    return isForProxy ? url.toEncoded() : url.path(QUrl::FullyEncoded).toLatin1();
}

// RFC 9112, 3. Some servers refuse requests without a User-Agent. Logs in at a proxy unless login is empty.
QByteArray RequestText(const QUrl& url, bool isForProxy, const QByteArray& login) {
    return "GET " + TargetOf(url, isForProxy) +
           " HTTP/1.1\r\nHost: " + url.authority(QUrl::FullyEncoded).toLatin1() +
           "\r\nUser-Agent: Mozilla/5.0\r\nAccept-Encoding: identity\r\n" +
           (login.isEmpty() ? QByteArray() : "Proxy-Authorization: " + login + "\r\n") + "\r\n";
}

// A full disk takes a part of the bytes first, and tells its error at the rest.
bool WriteWhole(QIODevice& to, const QByteArray& bytes) {
    const auto written = static_cast<qsizetype>(to.write(bytes));
    return written == bytes.size() ||
           (written >= 0 && to.write(bytes.sliced(written)) == bytes.size() - written);
}

}  // namespace

QString QHttp::NoAnswer() {
    return tr("The server does not answer");
}

QString QHttp::BadAnswer() {
    return tr("The server's answer is incomplete or too large");
}

QString QHttp::NoTicket() {
    return tr("It wants a Kerberos ticket, and you have no valid one");
}

QHttp::QHttp(CPeerMemory& memory) : memory_(memory) {
    alarm_.setSingleShot(true);
    alarm_.setTimerType(Qt::PreciseTimer);
}

void QHttp::get(const QString& path, QIODevice* to, CWakingFlag& cancelled) {
    to_ = to;
    cancelled_ = &cancelled;
    wasSent_ = false;
    isGarbled_ = false;
    header_ = {};
    received_ = 0;
    error_ = Error::NONE;
    errorString_.clear();
    sinceProgress_.start();
    next_.setRemainingTime(bounds_.connect);
    end_.setRemainingTime(bounds_.wholeTime);
    url_.setPath(path.isEmpty() ? QString("/") : path, QUrl::TolerantMode);
    if (!to_->isOpen())
        SetError(Error::NOT_WRITTEN, to_->errorString());
    else if (scheme_ == ProxyScheme::NEGOTIATE)
        FetchWithTicket();
    else if (!proxy_.user().isEmpty() && scheme_ == ProxyScheme::NTLM)
        FetchWithNtlm();
    else if (!proxy_.user().isEmpty() && scheme_ == ProxyScheme::DIGEST)
        FetchWithDigest();
    else
        FetchBySocket(BasicLogin());
    if (received_ > 0)
        ReportProgress();
}

void QHttp::setHost(const QString& host, int port) {
    url_.setScheme("http");
    url_.setHost(host);
    url_.setPort(port == DEFAULT_PORT ? -1 : port);
}

QByteArray QHttp::BasicLogin() const {
    if (proxy_.user().isEmpty() || scheme_ != ProxyScheme::BASIC)
        return {};
    return "Basic " + (proxy_.user() + u':' + proxy_.password()).toUtf8().toBase64();
}

void QHttp::FetchWithDigest() {
    bool isAnswered = false;
    do {
        isAnswered = digest_.has_value();
        FetchAnswering(isAnswered ? digest_->Answer(proxy_.user().toUtf8(), proxy_.password().toUtf8(),
                                                    TargetOf(url_, true))
                                  : QByteArray());
    } while (IsChallenged() && (!isAnswered || digest_->IsStale()));
}

void QHttp::FetchWithTicket() {
    if (FetchAsLoggedIn())
        return;
    next_.setRemainingTime(bounds_.connect);
    const auto answer = StartDetached([host = proxy_.hostName()] { return AnswerWithTicket(host); });
    if (WaitFor(answer) && !answer.result().isEmpty())
        FetchAnswering(answer.result());
    else if (error_ != Error::CANCELLED) {
        error_ = Error::NO_TICKET;
        errorString_ = answer.isFinished() ? NoTicket() : tr("The Kerberos server does not answer");
    }
}

void QHttp::FetchWithNtlm() {
    if (FetchAsLoggedIn())
        return;
    // The connection may end between the challenge and its answer.
    for (int tries = 0; tries < 2 && error_ == Error::NONE; ++tries) {
        FetchAnswering(CNtlmChallenge::Request());
        if (!IsChallenged() || !ntlm_)
            return;
        const quint64 nonce = QRandomGenerator::system()->generate64();
        const QDateTime now = QDateTime::currentDateTimeUtc();
        FetchAnswering(ntlm_->Answer(proxy_.user(), proxy_.password(), nonce, now), false);
        if (header_.statusCode() != 0)
            return;
    }
    SetError(Error::NETWORK, NoAnswer());
}

void QHttp::FetchAnswering(const QByteArray& answer, bool mayOpen) {
    header_ = {};
    FetchBySocket(answer, mayOpen);
    if (challenges_ >= MAX_CHALLENGES)
        SetError(Error::ASKED_TOO_OFTEN, {});
}

bool QHttp::FetchAsLoggedIn() {
    if (!socket_ || !isPassed_)
        return false;
    FetchAnswering({});
    return !IsChallenged();
}

bool QHttp::IsChallenged() const {
    const bool isAsked =
        scheme_ == ProxyScheme::NEGOTIATE ? header_.offersNegotiate() : header_.proxyScheme() == scheme_;
    return error_ == Error::NONE && isAsked;
}

void QHttp::FetchBySocket(const QByteArray& login, bool mayOpen) {
    const bool isForProxy = proxy_.type() == QNetworkProxy::HttpProxy;
    const QString host = isForProxy ? proxy_.hostName() : url_.host();
    const int port = isForProxy ? proxy_.port() : url_.port(DEFAULT_PORT);
    const QString peer = host + u':' + QString::number(port);
    const QByteArray text = RequestText(url_, isForProxy, login);
    // The other side may have closed the kept connection meanwhile.
    const bool isKept = socket_ && peer == peer_ && !rest_.hasExpired(LONGEST_REST.count()) &&
                        !socket_->waitForReadyRead(0) && socket_->state() == QAbstractSocket::ConnectedState;
    peer_ = peer;
    // A kept connection may end just as the request is sent: then it is sent once more (RFC 9112, 9.3.1).
    if ((isKept && Converse(text)) || !mayOpen)
        return;
    wasSent_ = false;
    if (Open(host, port) && !Converse(text))
        SetError(Error::NETWORK, NoAnswer());
}

bool QHttp::Open(const QString& host, int port) {
    socket_.reset();
    next_.setRemainingTime(bounds_.connect);
    const auto lookup = memory_.AddressesOf(host);
    if (!WaitFor(lookup))
        return false;
    QString error = tr("Host not found");
    QElapsedTimer time;
    time.start();
    if (const QList<QHostAddress> addresses = lookup.result(); !addresses.isEmpty())
        socket_ = ConnectToAny(
            addresses, static_cast<quint16>(port),
            [this](const boost::function<bool()>& keepWaiting) { return Wait(keepWaiting); }, error);
    if (socket_)
        socket_->setReadBufferSize(READ_AHEAD);
    else
        SetError(time.hasExpired(SLOW_MS) ? Error::UNREACHABLE : Error::NETWORK, error);
    return socket_ != nullptr;
}

bool QHttp::Converse(const QByteArray& request) {
    CHttpAnswerParser answer(bounds_.bodyBytes);
    const auto isQuiet = [this] {
        return socket_->bytesAvailable() == 0 && socket_->state() == QAbstractSocket::ConnectedState;
    };
    OnSent();
    socket_->write(request);
    socket_->flush();
    bool hasBegun = false;
    bool isOver = false;
    while (!isOver && Wait(isQuiet)) {
        const QByteArray bytes = socket_->readAll();
        hasBegun = hasBegun || !bytes.isEmpty();
        const QByteArray body = answer.Read(bytes);
        isOver = OnAnswer(answer.Header(), body) || answer.IsComplete() || answer.IsBroken();
    }
    isGarbled_ = hasBegun && header_.statusCode() == 0;
    if (answer.IsBroken() && hasBegun)
        SetError(Error::NETWORK, BadAnswer());
    if (error_ != Error::NONE || !answer.LeavesConnectionOpen())
        socket_.reset();
    rest_.start();
    return hasBegun || error_ != Error::NONE;
}

template <typename Result>
bool QHttp::WaitFor(const QFuture<Result>& future) {
    // The watcher's event makes the wait look again.
    QFutureWatcher<Result> watcher;
    watcher.setFuture(future);
    return Wait([&] { return !future.isFinished(); });
}

bool QHttp::Wait(const boost::function<bool()>& keepWaiting) {
    if (error_ != Error::NONE)
        return false;
    const QDeadlineTimer patience = std::min(next_, end_);
    alarm_.start(static_cast<int>(patience.remainingTime()) + 1);
    cancelled_->WaitWhile([&] { return !patience.hasExpired() && keepWaiting(); });
    alarm_.stop();
    if (cancelled_->IsSet())
        SetError(Error::CANCELLED, {});
    else if (keepWaiting())
        SetError(Error::TOO_LATE, NoAnswer());
    else if (wasSent_)
        next_.setRemainingTime(bounds_.silence);
    return error_ == Error::NONE;
}

void QHttp::OnSent() {
    wasSent_ = true;
    next_.setRemainingTime(bounds_.silence);
}

bool QHttp::OnAnswer(const QHttpResponseHeader& header, const QByteArray& body) {
    const int status = header.statusCode();
    if (header_.statusCode() == 0 && status != 0) {
        header_ = header;
        if (bounds_.mayTakeItsTime && status == QHttpResponseHeader::OK)
            end_ = QDeadlineTimer(QDeadlineTimer::Forever);
        skipped_ = 0;
        isPassed_ = status != QHttpResponseHeader::PROXY_AUTHENTICATION_REQUIRED;
        if (!isPassed_) {
            ++challenges_;
            digest_ = header.digest();
            ntlm_ = scheme_ == ProxyScheme::NTLM ? header.ntlm() : std::nullopt;
        }
    }
    if (status != QHttpResponseHeader::OK) {
        // A challenge of NTLM is read to its end, because its answer needs the same connection.
        skipped_ += body.size();
        return status != 0 && (isPassed_ || !ntlm_ || skipped_ > READ_AHEAD);
    }
    received_ += body.size();
    if (received_ > bounds_.bodyBytes)
        SetError(Error::NETWORK, BadAnswer());
    else if (!WriteWhole(*to_, body))
        SetError(Error::NOT_WRITTEN, to_->errorString());
    else if (sinceProgress_.hasExpired(PROGRESS_INTERVAL.count()))
        ReportProgress();
    return false;
}

void QHttp::ReportProgress() {
    sinceProgress_.start();
    emit dataReadProgress(ToInt(received_), ToInt(header_.contentLength()));
}

void QHttp::SetError(Error error, const QString& text) {
    if (error_ != Error::NONE)
        return;
    error_ = error;
    errorString_ = text;
}
