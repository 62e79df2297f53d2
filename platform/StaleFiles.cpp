// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/StaleFiles.h"

#include <ctime>
#include <memory>
#include <string>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/FileSystem.h"

namespace {

// Calls use(descriptor, name) for each entry of a folder, which may be given relative to another one.
template <typename Use>
void ForEachEntry(int parent, const char* path, const Use& use) {
    const int descriptor = openat(parent, path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    // Takes the descriptor with it.
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(descriptor < 0 ? nullptr : fdopendir(descriptor),
                                                        &closedir);
    if (!directory) {
        close(descriptor);
        return;
    }
    while (const dirent* entry = readdir(directory.get()))
        use(descriptor, entry->d_name);
}

// type is that of stat(2), such as S_IFREG.
bool IsStale(int folder, const char* name, mode_t type, std::time_t newest) {
    struct stat status {};
    return fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && (status.st_mode & S_IFMT) == type &&
           status.st_uid == geteuid() && status.st_mtime < newest;
}

void RemoveWithFiles(int parent, const char* folder, std::time_t newest) {
    ForEachEntry(parent, folder, [newest](int inner, const char* file) {
        if (IsStale(inner, file, S_IFREG, newest))
            unlinkat(inner, file, 0);
    });
    unlinkat(parent, folder, AT_REMOVEDIR);
}

}  // namespace

void RemoveStaleFiles(const CVardoDirectoryPath& folder, const CAtlString& beginning,
                      std::chrono::seconds age) {
    const std::string path = FileSystem::SystemPath(folder.GetDirectoryPathString());
    const std::string prefix = FileSystem::SystemPath(beginning);
    if (path.empty() || prefix.empty())
        return;
    const std::string folderPrefix = prefix + "-";
    const std::time_t newest = std::time(nullptr) - age.count();
    ForEachEntry(AT_FDCWD, path.c_str(), [&](int parent, const char* name) {
        if (std::string_view(name).starts_with(prefix) && IsStale(parent, name, S_IFREG, newest))
            unlinkat(parent, name, 0);
        if (std::string_view(name).starts_with(folderPrefix) && IsStale(parent, name, S_IFDIR, newest))
            RemoveWithFiles(parent, name, newest);
    });
}
