// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The program's own update.
#pragma once

#include "net/IDownloader.h"
#include "platform/desktop/IEnvironment.h"
#include "products/CUpdateXmlReader.h"
#include "signing/CInstallerSeal.h"

#include <boost/shared_ptr.hpp>

// Reads the program's own descriptions, and fetches the installer that they offer. GUI thread only; lives for
// one look at whether there is a newer version.
class CSelfUpdate : public CUpdateXmlReader {
public:
    // fileName is that of the local description in the shared data folder.
    CSelfUpdate(const CAtlString& fileName, const IEnvironment& environment);

    // Without a downloader nothing is fetched.
    void SetDownloader(const boost::shared_ptr<IDownloader>& downloader) { downloader_ = downloader; }
    // Called with how much of the installer has arrived.
    void SetProgressCallback(const IDownloader::ProgressCallback& callback) { progress_ = callback; }
    // Fetches the installer of the offer and makes it executable for its owner. The file stays: the installer
    // runs from it. False, and no file, when it could not be fetched, or when the maker's key lies in the
    // shared data folder and does not vouch for it.
    bool DownloadInstaller();
    bool IsDownloaded() const { return downloaded_; }
    // Empty until the installer was fetched.
    const CAtlString& GetInstallerPath() const { return installer_; }

protected:
    CAtlString GetLocalFile() const override { return localDescription_; }
    IDownloader* GetDownloader() const override { return downloader_.get(); }

private:
    // The path of a file in the shared data folder; its name when there is no such folder.
    CVardoFilePath SharedFile(const CAtlString& fileName) const;
    // The installer at address; empty when it could not be fetched.
    CVardoFilePath Fetch(const CAtlString& address);
    // The same, but empty unless the maker's signature is good.
    CVardoFilePath FetchSealed(const CAtlString& address, CInstallerSeal& seal);

    bool downloaded_ = false;
    CAtlString installer_;
    CVardoDirectoryPath sharedFolder_;
    CAtlString localDescription_;
    boost::shared_ptr<IDownloader> downloader_;
    IDownloader::ProgressCallback progress_;
};
