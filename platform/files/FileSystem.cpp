// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/files/FileSystem.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/text/TextConversion.h"

namespace {

constexpr mode_t PERMISSION_BITS = 0777;

// Calls a function like read(2) again while a signal interrupts it.
template <typename Call>
ssize_t Uninterrupted(Call call) {
    ssize_t result = 0;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

}  // namespace

namespace FileSystem {

std::string SystemPath(const CAtlString& path) {
    const bool encodable = std::none_of(path.begin(), path.end(),
                                        [](wchar_t ch) { return ch == 0 || (ch >= 0xD800 && ch <= 0xDFFF); });
    return encodable ? EncodeUtf8(path.GetString()) : std::string();
}

bool Exists(const CAtlString& path) {
    return access(SystemPath(path).c_str(), F_OK) == 0;
}

bool IsTaken(const CAtlString& path) {
    struct stat status {};
    return lstat(SystemPath(path).c_str(), &status) == 0 || (errno != ENOENT && errno != ENOTDIR);
}

bool IsDirectory(const CAtlString& path) {
    struct stat status {};
    return stat(SystemPath(path).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool IsFile(const CAtlString& path) {
    struct stat status {};
    return stat(SystemPath(path).c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

bool CreateDirectory(const CAtlString& path) {
    return mkdir(SystemPath(path).c_str(), PERMISSION_BITS) == 0;
}

bool DeleteFile(const CAtlString& path) {
    return unlink(SystemPath(path).c_str()) == 0;
}

bool RemoveDirectory(const CAtlString& path) {
    return rmdir(SystemPath(path).c_str()) == 0;
}

bool MakeWritable(const CAtlString& path) {
    const std::string name = SystemPath(path);
    struct stat status {};
    if (lstat(name.c_str(), &status) != 0)
        return false;
    constexpr mode_t anyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    if (S_ISLNK(status.st_mode) || (status.st_mode & anyWrite) != 0)
        return true;
    return chmod(name.c_str(), status.st_mode | S_IWUSR | S_IWGRP) == 0;
}

bool MakeOwnersProgram(const CAtlString& path) {
    return chmod(SystemPath(path).c_str(), S_IRWXU) == 0;
}

bool RenameToFree(const CAtlString& from, const CAtlString& to) {
    const std::string source = SystemPath(from);
    const std::string target = SystemPath(to);
    if (renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    const bool isUnknownHere = errno == EINVAL || errno == ENOSYS;
    if (!isUnknownHere || link(source.c_str(), target.c_str()) != 0)
        return false;
    if (unlink(source.c_str()) == 0)
        return true;
    unlink(target.c_str());
    return false;
}

CFileDescriptor OpenForReading(const CAtlString& path, off_t& size) {
    CFileDescriptor file(open(SystemPath(path).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (!file.IsOpen() || fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode))
        return CFileDescriptor();
    size = status.st_size;
    return file;
}

off_t ReadFully(const CFileDescriptor& file, char* buffer, off_t size) {
    off_t count = 0;
    while (count < size) {
        const ssize_t got = Uninterrupted(
            [&] { return read(file.Get(), buffer + count, static_cast<std::size_t>(size - count)); });
        if (got <= 0)
            break;
        count += got;
    }
    return count;
}

bool WriteFully(const CFileDescriptor& file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = Uninterrupted([&] { return write(file.Get(), bytes.data(), bytes.size()); });
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

}  // namespace FileSystem
