// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Fetches one http address into one file.
#pragma once

#include "net/QtDownloaderBase.h"
#include "net/Transfer.h"

class QFile;
class QUrl;

// The transfer, direct or through a proxy. It tries again each time it can answer the proxy's challenge with
// credentials, up to QHttp::MAX_CHALLENGES attempts in all. RESULT_OK for a status up to 200 and a whole body
// that is not empty. A failure leaves no file or an empty one. The transfer does not follow redirections.
//
// The first request to a proxy goes without credentials, and its challenge decides how to send those in hand.
// Without any, the user's ticket of Kerberos goes where the proxy takes it, and once in a check unless it is
// accepted. When a proxy has refused credentials, it gets them again only as the answer to a question. A host
// or proxy that was silent once in a check is not asked again in that check.
class QtDownloader : public QtDownloaderBase {
    Q_OBJECT

public:
    // Whether the address is an http address; a transfer fetches no other.
    static bool CanFetch(const QUrl& address);

    explicit QtDownloader(const TransferBounds& bounds,
                          const boost::shared_ptr<CTransferThreads>& threads = {});
    ~QtDownloader() override { Abandon(); }

    // A transfer that was started ahead has ended because it would have had to ask for credentials.
    bool IsHeld() const { return HasEnded() && wasHeld_; }
    // Valid after Finish.
    const TransferRecord& GetRecord() const { return record_; }

protected:
    int Download(const CAtlString& url, const CAtlString& file) override;

private:
    // Attempts until the proxy lets the request pass or the user declines to give credentials.
    int Transfer(const QUrl& address, QFile& file);
    // One request into a fresh file.
    void Attempt(const QUrl& address, QFile& file);
    // Whether one more attempt can end before the proxy has asked too often.
    bool MayBeAskedAgain() const;
    // Whether the next attempt may send the credentials in hand.
    bool HasCredentialsToTry() const;
    // The proxy wants something other than the last attempt sent.
    bool IsChallenged() const;
    void NoteChallenge();
    // Gets new credentials; false when there are none.
    bool AskForCredentials();
    // Fails at once when the host or the proxy was silent before.
    bool IsKnownToBeSilent();
    // Remembers how the host and the proxy have behaved, and which of them is to blame for a failure.
    void NoteOutcome();
    // Tells what the proxy wants, or how the last attempt failed; the text about a silent server would name
    // the wrong one. For a password alone, the status says it.
    void BlameProxy();
    // The result. Deletes the file of a failure; only an empty one may stay.
    int Judge(QFile& file);

    TransferBounds bounds_;
    // The names of the peers in CPeerMemory.
    QString proxy_;
    QString site_;
    // The status of the last header received, even when an earlier attempt received it.
    int status_ = 0;
    Credentials credentials_;
    // The last attempt showed the user's ticket, or would have done so.
    bool isTicketShown_ = false;
    // The last attempt sent the credentials.
    bool areSent_ = false;
    // This transfer sends them no more.
    bool areTried_ = false;
    bool wasHeld_ = false;
    TransferRecord record_;
};
