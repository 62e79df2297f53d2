// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The program's own update.
#pragma once

#include "net/IDownloader.h"
#include "platform/IEnvironment.h"
#include "products/CUpdateXmlReader.h"

#include <boost/shared_ptr.hpp>

// Reads the program's own descriptions, and fetches the installer that they offer. GUI thread only; lives for
// one look at whether there is a newer version.
class CSelfUpdate : public CUpdateXmlReader {
public:
    // fileName is that of the local description in the shared data folder.
    CSelfUpdate(const CAtlString& fileName, const IEnvironment& environment);

    // Without a downloader nothing is fetched.
    void SetDownloader(const boost::shared_ptr<IDownloader>& downloader) { downloader_ = downloader; }
    // Fetches the installer of the offer and makes it executable for its owner; false when it could not be
    // fetched. The file stays: the installer runs from it.
    bool DownloadInstaller();
    bool IsDownloaded() const { return downloaded_; }
    // Empty until the installer was fetched.
    const CAtlString& GetInstallerPath() const { return installer_; }

protected:
    CAtlString GetLocalFile() const override { return localDescription_; }
    CAtlString GetRemoteFile() override;

private:
    bool downloaded_ = false;
    CAtlString installer_;
    CAtlString localDescription_;
    boost::shared_ptr<IDownloader> downloader_;
};
