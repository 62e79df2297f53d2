// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Fetches one http address into one file.
#pragma once

#include "net/QtDownloaderBase.h"
#include "net/TransferBounds.h"
#include "net/TransferRecord.h"

class QFile;
class QUrl;

// The transfer: direct or through a proxy, with as many attempts as the proxy's questions for credentials are
// answered, up to QHttp::MAX_CHALLENGES. RESULT_OK for a status up to 200 and a whole body that is not empty.
// Of a failure at most an empty file is left. Redirections are not followed.
//
// The first request to a proxy goes without credentials, and its challenge decides how they are sent. Those
// that a proxy has refused are not sent to it again until they are answered to a question. A host or proxy
// that was silent once in a check is not waited for again.
class QtDownloader : public QtDownloaderBase {
    Q_OBJECT

public:
    // Whether an address is of the kind that is fetched at all.
    static bool CanFetch(const QUrl& address);

    explicit QtDownloader(const TransferBounds& bounds,
                          const boost::shared_ptr<CTransferThreads>& threads = {});
    // Abandons what was not finished.
    ~QtDownloader() override { Abandon(); }

    // Of a transfer that was started ahead: it has ended because somebody would have had to be asked for
    // credentials.
    bool IsHeld() const { return HasEnded() && wasHeld_; }
    // After Finish.
    const TransferRecord& GetRecord() const { return record_; }

protected:
    int Download(const CAtlString& url, const CAtlString& file) override;

private:
    // Attempts until the proxy lets the request through or credentials are declined.
    int Transfer(const QUrl& address, QFile& file);
    // One request into a fresh file; returns when it has finished.
    void Attempt(const QUrl& address, QFile& file);
    // Credentials are there which the proxy may want, and which this attempt shall send.
    bool HasCredentialsToTry() const;
    // The proxy wants credentials, and others than were sent.
    bool IsChallenged() const;
    void NoteChallenge();
    // New credentials, or whether there is nobody to give them.
    bool AskForCredentials();
    // Fails at once when the host or the proxy was silent before.
    bool IsKnownToBeSilent();
    // Remembers what the host and the proxy have shown, and whose fault a failure is.
    void NoteOutcome();
    int Judge(QFile& file);
    void Blame(TransferRecord::Culprit culprit, const QString& error);

    TransferBounds bounds_;
    // What peers are remembered by.
    QString proxy_;
    QString site_;
    // Of the last header received, be it of an earlier attempt.
    int status_ = 0;
    // In hand, and whether the last attempt sent them.
    Credentials credentials_;
    bool areSent_ = false;
    // They are not to be sent by this transfer any more.
    bool areTried_ = false;
    bool wasHeld_ = false;
    TransferRecord record_;
};
