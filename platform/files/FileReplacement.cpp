// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/files/FileReplacement.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files/CVardoDirectoryPath.h"
#include "platform/files/FileSystem.h"
#include "platform/files/StaleFiles.h"

namespace {

// Stands between a file's name and the random part in the name of the copy.
const char* const BESIDE = ".new-";
// No replacement takes so long.
constexpr std::chrono::hours LONGEST_REPLACEMENT{1};

bool MayBeWritten(const std::string& path) {
    return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS | AT_SYMLINK_NOFOLLOW) == 0 || errno == ENOENT;
}

// True: the contents are on the disk. Otherwise a crash could leave the new name without them.
bool Write(std::string_view contents, CFileDescriptor& file, mode_t mode) {
    return file.IsOpen() && FileSystem::WriteFully(file, contents) && fchmod(file.Get(), mode) == 0 &&
           fsync(file.Get()) == 0 && file.Close();
}

}  // namespace

bool ReplaceFile(std::string_view contents, const CVardoFilePath& destination, mode_t mode) {
    const std::string target = FileSystem::SystemPath(destination.GetFilePathString());
    if (target.empty() || !MayBeWritten(target))
        return false;
    RemoveStaleFiles(CVardoDirectoryPath(destination), destination.GetFileName() + BESIDE,
                     LONGEST_REPLACEMENT);

    std::string beside = target + BESIDE + "XXXXXX";
    CFileDescriptor out(mkostemp(beside.data(), O_CLOEXEC));
    if (!out.IsOpen())
        return false;
    if (Write(contents, out, mode) && std::rename(beside.c_str(), target.c_str()) == 0)
        return true;
    unlink(beside.c_str());
    return false;
}
