// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "signing/CPrivateFolder.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files/CTemporaryFolder.h"
#include "platform/files/FileSystem.h"

namespace {

bool IsOursAlone(const struct stat& status) {
    return S_ISREG(status.st_mode) && status.st_uid == geteuid() && status.st_nlink == 1 &&
           (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

}  // namespace

CPrivateFolder::CPrivateFolder() {
    const CAtlString parent = CVardoDirectoryPath::GetTempDirectory().GetDirectoryPathString();
    std::string name = FileSystem::SystemPath(parent + L"/" + CTemporaryFolder::OWN_NAME + L"XXXXXX");
    // Its mode is 0700, less what the umask takes away.
    if (!parent.IsEmpty() && mkdtemp(name.data()))
        folder_ = CVardoDirectoryPath(CAtlString(name.c_str()));
}

CPrivateFolder::~CPrivateFolder() {
    if (isKept_ || folder_.IsEmpty())
        return;
    file_.Delete();
    FileSystem::RemoveDirectory(folder_.GetDirectoryPathString());
}

CFileDescriptor CPrivateFolder::TakeIn(const CVardoFilePath& file) {
    const CVardoFilePath target = CVardoDirectoryPath::Combine(folder_, file.GetFileName());
    const std::string path = FileSystem::SystemPath(target.GetFilePathString());
    if (folder_.IsEmpty() ||
        std::rename(FileSystem::SystemPath(file.GetFilePathString()).c_str(), path.c_str()) != 0) {
        file.Delete();
        return CFileDescriptor();
    }
    file_ = target;
    CFileDescriptor descriptor(open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (!descriptor.IsOpen() || fstat(descriptor.Get(), &status) != 0 || !IsOursAlone(status))
        return CFileDescriptor();
    return descriptor;
}

CVardoFilePath CPrivateFolder::Keep() {
    isKept_ = true;
    return file_;
}
