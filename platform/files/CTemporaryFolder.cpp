// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/files/CTemporaryFolder.h"

#include <QStandardPaths>
#include <memory>
#include <string>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files/FileSystem.h"
#include "platform/files/StaleFiles.h"

namespace {

// Room for one entry of the user database (getpwuid_r(3)).
constexpr std::size_t USER_ENTRY_BYTES = 16384;

CVardoDirectoryPath CacheFolder() {
    return CVardoDirectoryPath(
        CAtlString(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)));
}

std::string SystemPath(const CVardoDirectoryPath& folder) {
    return FileSystem::SystemPath(folder.GetDirectoryPathString());
}

CVardoDirectoryPath ParentOf(const CVardoDirectoryPath& folder) {
    CVardoDirectoryPath parent(folder);
    return parent.RemoveLastComponent() ? parent : CVardoDirectoryPath();
}

bool IsOnlyOwnersToWrite(const struct stat& status) {
    return (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

// Only the user and root can rename or remove what the user has in the folder.
bool KeepsWhatIsInIt(const CVardoDirectoryPath& folder) {
    struct stat status {};
    if (stat(SystemPath(folder).c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
        return false;
    const bool isTrusted = status.st_uid == 0 || status.st_uid == geteuid();
    return isTrusted && (IsOnlyOwnersToWrite(status) || (status.st_mode & S_ISVTX) != 0);
}

// Sets the mode again, because of the umask. In a parent like this nobody else can have exchanged the folder.
void CreateForOwner(const CVardoDirectoryPath& folder) {
    const std::string path = SystemPath(folder);
    if (KeepsWhatIsInIt(ParentOf(folder)) && mkdir(path.c_str(), S_IRWXU) == 0)
        chmod(path.c_str(), S_IRWXU);
}

}  // namespace

CAtlString CTemporaryFolder::NamesOfProcess() {
    return OWN_NAME + CAtlString(QString::number(getpid()));
}

CAtlString CTemporaryFolder::UserName() {
    const auto buffer = std::make_unique<char[]>(USER_ENTRY_BYTES);
    passwd entry{};
    passwd* found = nullptr;
    const int error = getpwuid_r(getuid(), &entry, buffer.get(), USER_ENTRY_BYTES, &found);
    const CAtlString name(error == 0 && found ? found->pw_name : nullptr);
    return name.IsEmpty() ? CAtlString(std::to_wstring(getuid()).c_str()) : name;
}

const CTemporaryFolder& CTemporaryFolder::OfProcess() {
    static const CTemporaryFolder folder(
        CVardoDirectoryPath(L"/tmp/" + UserName()),
        CVardoDirectoryPath(CacheFolder().GetDirectoryPathString() + L"/VARDOProductUpdate"));
    return folder;
}

bool CTemporaryFolder::IsSafe(const CVardoDirectoryPath& folder) {
    struct stat status {};
    return KeepsWhatIsInIt(ParentOf(folder)) && lstat(SystemPath(folder).c_str(), &status) == 0 &&
           S_ISDIR(status.st_mode) && status.st_uid == geteuid() && IsOnlyOwnersToWrite(status);
}

CVardoDirectoryPath CTemporaryFolder::Get() const {
    for (const CVardoDirectoryPath& folder : {shared_, own_}) {
        if (IsSafe(folder))
            return folder;
        ParentOf(folder).Create();
        CreateForOwner(folder);
        if (IsSafe(folder))
            return folder;
    }
    return {};
}

void CTemporaryFolder::RemoveStaleFiles(const CAtlString& beginning, std::chrono::seconds age) const {
    for (const CVardoDirectoryPath& folder : {shared_, own_})
        if (IsSafe(folder)) {
            ::RemoveStaleFiles(folder, OWN_NAME, age);
            RemoveStaleFolders(folder, OWN_NAME, age);
        }
    if (IsSafe(own_))
        ::RemoveStaleFiles(own_, beginning, age);
}
