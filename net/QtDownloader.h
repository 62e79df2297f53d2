// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Fetches one http address into one file.
#pragma once

#include "net/QHttpResponseHeader.h"
#include "net/QtDownloaderBase.h"
#include "net/TransferBounds.h"
#include "net/TransferRecord.h"

#include <boost/shared_ptr.hpp>

class QFile;
class QHttp;
class QUrl;

// The transfer: direct or through a proxy, with as many attempts as the proxy's questions for credentials are
// answered. RESULT_OK for a status up to 200 and a whole body that is not empty. Of a failure at most an
// empty file is left, or a proxy's question that nobody answered. Redirections are not followed.
class QtDownloader : public QtDownloaderBase {
    Q_OBJECT

public:
    // Whether an address is of the kind that is fetched at all.
    static bool CanFetch(const QUrl& address);

    explicit QtDownloader(const TransferBounds& bounds);
    ~QtDownloader() override;

    // After Finish: whether an answer came that was not a proxy's question for credentials.
    bool WasLetThrough() const;
    // After Finish.
    TransferRecord GetRecord() const;

protected:
    void WakeUp() override;
    int Download(const CAtlString& url, const CAtlString& file) override;

protected slots:
    // On the asking thread, like every slot here; the transfer waits for the last of them.
    void httpRequestFinished(int id, bool error);
    void httpResponseHeaderReceived(const QHttpResponseHeader& header);
    void httpDataReadProgress(int done, int total);

private:
    void MakeHttp();
    // Attempts until the proxy lets the request through or credentials are declined.
    int Transfer(const QUrl& address, QFile& file);
    // One request into a fresh file; returns when it has finished.
    void Attempt(const QUrl& address, const CAtlString& userName, const CAtlString& password, QFile& file);
    // There is no proxy's question left to answer.
    bool IsOver() const;
    int Judge(QFile& file) const;
    // The attempt ended on this side: no answer within the bounds, no room for it, or nobody who wants it.
    bool GaveUp() const;
    // The connection ended within an answer. Without a length, its end is that of the body.
    bool IsCutOff() const;

    TransferBounds bounds_;
    boost::shared_ptr<QHttp> http_;
    int requestId_ = 0;
    WakingFlag requestFinished_;
    // Of the last header received, be it of an earlier attempt.
    int status_ = 0;
    // Without the status; written by the transfer's thread before it ends.
    TransferRecord record_;
};
