// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/QtDownloader.h"

#include <QElapsedTimer>
#include <QFile>
#include <QUrl>
#include <boost/make_shared.hpp>

#include "net/ConnectionInfo.h"
#include "net/QHttp.h"
#include "platform/ResultCodes.h"

namespace {

QNetworkProxy Route(const ConnectionInfo& info, const CAtlString& userName, const CAtlString& password) {
    if (info.GetProxyMode() == ConnectionInfo::DIRECT)
        return QNetworkProxy(QNetworkProxy::NoProxy);
    return QNetworkProxy(QNetworkProxy::HttpProxy, info.GetProxyHost().ToQString(),
                         static_cast<quint16>(info.GetProxyPort()), userName.ToQString(),
                         password.ToQString());
}

// By its name: QFile::remove keeps a file whose last bytes cannot be written.
void Discard(QFile& file) {
    file.close();
    QFile::remove(file.fileName());
}

// For its owner alone, and only where nothing is: neither what another put there meanwhile is written to, nor
// what a link leads to. A file that cannot be had stays closed.
void Create(QFile& file) {
    file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner);
}

}  // namespace

QtDownloader::QtDownloader(const TransferBounds& bounds) : bounds_(bounds) {
    static const int registered = qRegisterMetaType<QHttpResponseHeader>("QHttpResponseHeader");
    Q_UNUSED(registered);
}

QtDownloader::~QtDownloader() = default;

bool QtDownloader::CanFetch(const QUrl& address) {
    return address.scheme() == QLatin1String("http");
}

bool QtDownloader::WasLetThrough() const {
    return status_ != 0 && status_ != QHttpResponseHeader::PROXY_AUTHENTICATION_REQUIRED;
}

TransferRecord QtDownloader::GetRecord() const {
    TransferRecord record = record_;
    record.status = status_;
    return record;
}

void QtDownloader::WakeUp() {
    QtDownloaderBase::WakeUp();
    requestFinished_.Set();
}

int QtDownloader::Download(const CAtlString& url, const CAtlString& file) {
    record_.url = url;
    const QUrl address(url.ToQString());
    if (!CanFetch(address))
        return RESULT_FAILED;
    QElapsedTimer time;
    time.start();
    QFile target(file.ToQString());
    MakeHttp();
    const int result = Transfer(address, target);
    record_.proxyHost = Info().GetProxyHost();
    record_.proxyPort = Info().GetProxyPort();
    record_.bytes = http_->received();
    record_.milliseconds = time.elapsed();
    record_.error = CAtlString(http_->errorString());
    record_.succeeded = result == RESULT_OK;
    http_.reset();
    return result;
}

// The client lives on the transfer's thread, so its signals reach this object's slots queued.
void QtDownloader::MakeHttp() {
    http_ = boost::make_shared<QHttp>(bounds_);
    connect(http_.get(), &QHttp::requestFinished, this, &QtDownloader::httpRequestFinished);
    connect(http_.get(), &QHttp::responseHeaderReceived, this, &QtDownloader::httpResponseHeaderReceived);
    connect(http_.get(), &QHttp::dataReadProgress, this, &QtDownloader::httpDataReadProgress);
}

int QtDownloader::Transfer(const QUrl& address, QFile& file) {
    CAtlString userName = Info().GetUserName();
    CAtlString password = Info().GetPassword();
    Attempt(address, userName, password, file);
    while (!IsOver()) {
        if (!http_->hasHeldBackCredentials() &&
            !RequestProxyAuth(Info().GetProxyHost(), Info().GetProxyPort(), userName, password))
            return IsCancelled() ? Judge(file) : RESULT_ABORTED;
        Attempt(address, userName, password, file);
    }
    Info().SetCredentials(userName, password);
    return Judge(file);
}

void QtDownloader::Attempt(const QUrl& address, const CAtlString& userName, const CAtlString& password,
                           QFile& file) {
    Discard(file);
    requestFinished_.Clear();
    http_->setProxy(Route(Info(), userName, password));
    http_->setHost(address.host(), address.port(QHttp::DEFAULT_PORT));
    if (IsCancelled()) {
        requestFinished_.Set();
    } else {
        Create(file);
        requestId_ = http_->get(address.path(QUrl::FullyEncoded), &file);
    }
    requestFinished_.Wait();
}

bool QtDownloader::IsOver() const {
    return status_ != QHttpResponseHeader::PROXY_AUTHENTICATION_REQUIRED || GaveUp();
}

int QtDownloader::Judge(QFile& file) const {
    // Then whatever bears its name is not of this transfer.
    if (!file.isOpen())
        return RESULT_FAILED;
    if (status_ > QHttpResponseHeader::OK || GaveUp() || IsCutOff() || !file.flush()) {
        Discard(file);
        return RESULT_FAILED;
    }
    return http_->error() == QHttp::Error::NONE && file.size() > 0 ? RESULT_OK : RESULT_FAILED;
}

bool QtDownloader::IsCutOff() const {
    return status_ != 0 && http_->error() == QHttp::Error::NETWORK;
}

bool QtDownloader::GaveUp() const {
    return IsCancelled() || http_->error() == QHttp::Error::OUT_OF_BOUNDS ||
           http_->error() == QHttp::Error::NOT_WRITTEN;
}

// The client of a cancelled transfer may be gone.
void QtDownloader::httpRequestFinished(int id, bool error) {
    if (IsCancelled())
        return;
    if (error)
        emit ConnectionFailedSignal(CAtlString(http_->errorString()));
    if (id == requestId_)
        requestFinished_.Set();
}

void QtDownloader::httpResponseHeaderReceived(const QHttpResponseHeader& header) {
    status_ = header.statusCode();
}

void QtDownloader::httpDataReadProgress(int done, int total) {
    emit DataReadProgressSignal(done, total);
}
