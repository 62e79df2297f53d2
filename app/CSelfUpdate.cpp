// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/CSelfUpdate.h"

#include "platform/Addresses.h"
#include "platform/FileSystem.h"

CSelfUpdate::CSelfUpdate(const CAtlString& fileName, const IEnvironment& environment)
    : localDescription_(fileName) {
    const CVardoDirectoryPath folder = environment.SharedDataFolder();
    if (!folder.IsEmpty())
        localDescription_ = CVardoDirectoryPath::Combine(folder, fileName).GetFilePathString();
}

CAtlString CSelfUpdate::GetRemoteFile() {
    return downloader_ ? downloader_->Download(GetRemoteAddress()) : CAtlString();
}

bool CSelfUpdate::DownloadInstaller() {
    if (!downloader_)
        return false;
    installer_ = downloader_->DownloadInstaller(JoinTrimmed(GetUpdateInstallURL(), GetUpdateInstallFile()));
    if (installer_.IsEmpty())
        return false;
    FileSystem::MakeOwnersProgram(installer_);
    downloaded_ = true;
    return true;
}
