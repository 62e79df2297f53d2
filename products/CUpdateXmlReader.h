// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The two descriptions of something that can be updated: the local one says what is installed and where the
// remote one lies, the remote one what is offered.
#pragma once

#include "net/IDownloader.h"
#include "platform/text/CAtlString.h"
#include "platform/text/CAtlStringA.h"
#include "products/CUpdateTable.h"
#include "products/Verdict.h"

// Reads both descriptions, keeps what they say, and answers for the offer that applies to the installed
// version. Where they lie is left to derived classes. One thread at a time. Failures are false results.
//
// Calling order: LoadLocal, LoadRemote, then IsUpdateAvailable and the offer's texts.
class CUpdateXmlReader {
public:
    // A file that switches the whole process to test mode; each reader's constructor looks for it. In test
    // mode the offers of "TestProduct" elements are read in place of those of "Product" elements.
    static const CAtlString TEST_MARKER;
    // Whether that file is there now, and counts: it is a plain file of root or of this user.
    static bool IsTestMode();

    CUpdateXmlReader();
    virtual ~CUpdateXmlReader() = default;

    // Reads the file that GetLocalFile names.
    virtual bool LoadLocal();
    // Fetches the remote description and reads it.
    virtual bool LoadRemote();
    // Both descriptions were read, and the offered version is above the installed one.
    virtual bool IsUpdateAvailable() const;
    // Reads a description's bytes. What was read before a failure stays stored.
    virtual bool ParseLocal(const CAtlStringA& text);
    virtual bool ParseRemote(const CAtlStringA& text);

    // Why the description that was read last counts, or does not.
    Verdict GetVerdict() const { return verdict_; }
    bool IsRemoteLoaded() const { return remoteLoaded_; }
    // The local description says that the program must not look for updates of itself.
    bool IsNoUpdates() const { return noUpdates_; }
    const CVersionString& GetCurrentVersion() const { return table_.GetCurrentVersion(); }
    // From now on answers as if that version were installed.
    void SetCurrentVersion(const CVersionString& version) { table_.SetCurrentVersion(version); }

    // All offers; belongs to the reader, and changes with what it reads.
    const CUpdateTable& GetTable() const { return table_; }
    // What the offer for the installed version says.
    CVersionString GetUpdateVersion() const { return table_.ChooseOffer().version; }
    CAtlString GetUpdateInstallFile() const { return table_.ChooseOffer().installFile; }
    CAtlString GetUpdateInstallURL() const { return table_.ChooseOffer().installUrl; }
    CAtlString GetUpdateInstallSize() const { return table_.ChooseOffer().installSize; }
    CAtlString GetUpdateWebPage() const { return table_.ChooseOffer().webPage; }
    CAtlString GetUpdateArgument() const { return table_.ChooseOffer().argument; }

    // Where the installer of that offer lies.
    CAtlString GetInstallerAddress() const;

    // Where the remote description lies: its folder, which ends in "/", followed by its file name.
    CAtlString GetRemoteAddress() const { return remoteFolder_ + remoteFileName_; }

protected:
    // The path of the local description, which lies in the shared data folder.
    virtual CAtlString GetLocalFile() const = 0;
    // Fetches the remote description; with null nothing is fetched.
    virtual IDownloader* GetDownloader() const = 0;

private:
    Verdict verdict_ = Verdict::NOT_READ;
    bool localLoaded_ = false;
    bool remoteLoaded_ = false;
    CUpdateTable table_;
    CAtlString remoteFolder_;
    CAtlString remoteFileName_;
    bool noUpdates_ = false;
};
