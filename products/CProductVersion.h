// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// One installed version of a product.
#pragma once

#include "net/IDownloader.h"
#include "platform/files/CVardoFilePath.h"
#include "platform/text/CAtlString.h"
#include "products/CUpdateXmlReader.h"

// Reads a local description file of the shared data folder, and the remote description that it names. GUI
// thread only.
class CProductVersion : public CUpdateXmlReader {
public:
    explicit CProductVersion(const CVardoFilePath& localDescription)
        : localDescription_(localDescription.GetFilePathString()) {}

    // Fetches the remote description; not owned, and must live as long as LoadRemote may be called. With null
    // nothing is fetched.
    void SetDownloader(IDownloader* downloader) { downloader_ = downloader; }

    // The row in the window's table.
    void SetRow(int row) { row_ = row; }
    int GetRow() const { return row_; }

protected:
    CAtlString GetLocalFile() const override { return localDescription_; }
    IDownloader* GetDownloader() const override { return downloader_; }

private:
    int row_ = 0;
    IDownloader* downloader_ = nullptr;
    CAtlString localDescription_;
};
