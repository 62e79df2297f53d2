// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/StaleFiles.h"

#include <ctime>
#include <memory>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/TextConversion.h"

namespace {

bool IsStale(int folder, const char* name, std::time_t newest) {
    struct stat status {};
    return fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(status.st_mode) &&
           status.st_uid == geteuid() && status.st_mtime < newest;
}

}  // namespace

void RemoveStaleFiles(const CVardoDirectoryPath& folder, const CAtlString& beginning,
                      std::chrono::seconds age) {
    const std::unique_ptr<char[]> path = DuplicateAsUtf8(folder.GetDirectoryPathString().GetString());
    const std::unique_ptr<char[]> prefix = DuplicateAsUtf8(beginning.GetString());
    const int descriptor = open(path.get(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    // Takes the descriptor with it.
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(descriptor < 0 ? nullptr : fdopendir(descriptor),
                                                        &closedir);
    if (!directory) {
        close(descriptor);
        return;
    }
    const std::time_t newest = std::time(nullptr) - age.count();
    while (const dirent* entry = readdir(directory.get()))
        if (std::string_view(entry->d_name).starts_with(prefix.get()) &&
            IsStale(descriptor, entry->d_name, newest))
            unlinkat(descriptor, entry->d_name, 0);
}
