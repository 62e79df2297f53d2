// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/files/StaleFiles.h"

#include <ctime>
#include <memory>
#include <string>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files/FileSystem.h"

namespace {

// Calls use(descriptor, name) for each entry of a folder, which may be given relative to another one.
template <typename Use>
void ForEachEntry(int parent, const char* path, const Use& use) {
    const int descriptor = openat(parent, path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    // closedir closes the descriptor, too.
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
bool IsStale(int folder, const char* name, mode_t type, std::chrono::seconds age) {
    struct stat status {};
    return fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && (status.st_mode & S_IFMT) == type &&
           status.st_uid == geteuid() && status.st_mtime < std::time(nullptr) - age.count();
}

// Calls remove(descriptor, name) for each stale entry of that type whose name begins with beginning.
template <typename Remove>
void RemoveStale(const CVardoDirectoryPath& folder, const CAtlString& beginning, mode_t type,
                 std::chrono::seconds age, const Remove& remove) {
    const std::string path = FileSystem::SystemPath(folder.GetDirectoryPathString());
    const std::string prefix = FileSystem::SystemPath(beginning);
    if (path.empty() || prefix.empty())
        return;
    ForEachEntry(AT_FDCWD, path.c_str(), [&](int parent, const char* name) {
        if (std::string_view(name).starts_with(prefix) && IsStale(parent, name, type, age))
            remove(parent, name);
    });
}

}  // namespace

void RemoveStaleFiles(const CVardoDirectoryPath& folder, const CAtlString& beginning,
                      std::chrono::seconds age) {
    RemoveStale(folder, beginning, S_IFREG, age,
                [](int parent, const char* name) { unlinkat(parent, name, 0); });
}

void RemoveStaleFolders(const CVardoDirectoryPath& folder, const CAtlString& beginning,
                        std::chrono::seconds age) {
    RemoveStale(folder, beginning, S_IFDIR, age, [age](int parent, const char* name) {
        ForEachEntry(parent, name, [age](int inner, const char* file) {
            if (IsStale(inner, file, S_IFREG, age))
                unlinkat(inner, file, 0);
        });
        unlinkat(parent, name, AT_REMOVEDIR);
    });
}
