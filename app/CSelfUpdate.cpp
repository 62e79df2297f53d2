// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/CSelfUpdate.h"

#include "platform/files/FileSystem.h"
#include "platform/xml/XmlFile.h"

CSelfUpdate::CSelfUpdate(const CAtlString& fileName, const IEnvironment& environment)
    : sharedFolder_(environment.SharedDataFolder()),
      localDescription_(SharedFile(fileName).GetFilePathString()) {}

CVardoFilePath CSelfUpdate::SharedFile(const CAtlString& fileName) const {
    return sharedFolder_.IsEmpty() ? CVardoFilePath(fileName)
                                   : CVardoDirectoryPath::Combine(sharedFolder_, fileName);
}

bool CSelfUpdate::DownloadInstaller() {
    if (!downloader_)
        return false;
    const CAtlString address = GetInstallerAddress();
    CInstallerSeal seal(SharedFile(CInstallerSeal::KEY_FILE));
    const CVardoFilePath installer = seal.IsRequired() ? FetchSealed(address, seal) : Fetch(address);
    installer_ = installer.GetFilePathString();
    if (installer_.IsEmpty())
        return false;
    FileSystem::MakeOwnersProgram(installer_);
    downloaded_ = true;
    return true;
}

CVardoFilePath CSelfUpdate::Fetch(const CAtlString& address) {
    return CVardoFilePath(downloader_->DownloadInstaller(address, progress_));
}

// The signature comes first: it is small, and without a good one the installer need not be fetched.
CVardoFilePath CSelfUpdate::FetchSealed(const CAtlString& address, CInstallerSeal& seal) {
    const CVardoFilePath signature(downloader_->Download(address + CInstallerSeal::SIGNATURE_EXTENSION));
    const CAtlStringA bytes = ReadFileBytes(signature);
    signature.Delete();
    if (!seal.Accept({bytes.begin(), bytes.end()}, SealedOffer(GetTable().ChooseOffer())))
        return {};
    const CVardoFilePath installer = Fetch(address);
    return installer.IsEmpty() ? installer : seal.Secure(installer);
}
