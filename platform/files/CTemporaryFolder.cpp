// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/files/CTemporaryFolder.h"

#include <QStandardPaths>
#include <cstdlib>
#include <ctime>
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

// The user's name; the number of a user that the database does not know.
CAtlString UserName() {
    const auto buffer = std::make_unique<char[]>(USER_ENTRY_BYTES);
    passwd entry{};
    passwd* found = nullptr;
    const int error = getpwuid_r(getuid(), &entry, buffer.get(), USER_ENTRY_BYTES, &found);
    const CAtlString name(error == 0 && found ? found->pw_name : nullptr);
    return name.IsEmpty() ? CAtlString(std::to_wstring(getuid()).c_str()) : name;
}

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

// Nobody else can rename or remove what the user has in the folder.
bool KeepsWhatIsInIt(const CVardoDirectoryPath& folder) {
    struct stat status {};
    if (stat(SystemPath(folder).c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
        return false;
    const bool isTrusted = status.st_uid == 0 || status.st_uid == geteuid();
    return isTrusted && (IsOnlyOwnersToWrite(status) || (status.st_mode & S_ISVTX) != 0);
}

// A folder of the user's own; not a link to one.
bool IsOwn(const CVardoDirectoryPath& folder, struct stat& status) {
    return lstat(SystemPath(folder).c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == geteuid();
}

bool IsSafe(const CVardoDirectoryPath& folder) {
    struct stat status {};
    return KeepsWhatIsInIt(ParentOf(folder)) && IsOwn(folder, status) && IsOnlyOwnersToWrite(status);
}

// The mode again, after the umask has had its say: where this is called nobody else can have exchanged the
// folder.
bool OpenToOwner(const std::string& path) {
    return chmod(path.c_str(), S_IRWXU) == 0;
}

void CreateForOwner(const CVardoDirectoryPath& folder) {
    const std::string path = SystemPath(folder);
    if (KeepsWhatIsInIt(ParentOf(folder)) && mkdir(path.c_str(), S_IRWXU) == 0)
        OpenToOwner(path);
}

void RemoveOwn(const CVardoDirectoryPath& folder, std::chrono::seconds age) {
    RemoveStaleFiles(folder, CTemporaryFolder::OWN_NAME, age);
    RemoveStaleFolders(folder, CTemporaryFolder::OWN_NAME, age);
}

bool IsOlder(const CVardoDirectoryPath& folder, std::chrono::seconds age) {
    struct stat status {};
    return IsOwn(folder, status) && status.st_mtime < std::time(nullptr) - age.count();
}

}  // namespace

CTemporaryFolder& CTemporaryFolder::OfProcess() {
    static CTemporaryFolder folder(CVardoDirectoryPath(L"/tmp/" + UserName() + L"/"),
                                   {CVardoDirectoryPath(L"/tmp"), CacheFolder()});
    return folder;
}

CTemporaryFolder::~CTemporaryFolder() {
    if (!private_.IsEmpty())
        FileSystem::RemoveDirectory(private_.GetDirectoryPathString());
}

CVardoDirectoryPath CTemporaryFolder::Get() {
    if (!usual_.Exists())
        CreateForOwner(usual_);
    if (IsSafe(usual_))
        return usual_;
    if (private_.IsEmpty() || !IsSafe(private_))
        private_ = MakePrivate();
    return private_;
}

CVardoDirectoryPath CTemporaryFolder::MakePrivate() const {
    for (const CVardoDirectoryPath& parent : parents_) {
        parent.Create();
        std::string path =
            SystemPath(CVardoDirectoryPath(parent.GetDirectoryPathString() + L"/" + OWN_NAME)) + "XXXXXX";
        if (KeepsWhatIsInIt(parent) && mkdtemp(path.data()) && OpenToOwner(path))
            return CVardoDirectoryPath(CAtlString(path.c_str()));
    }
    return {};
}

void CTemporaryFolder::RemoveStaleFiles(const CAtlString& beginning, std::chrono::seconds age) const {
    RemoveOwn(usual_, age);
    const CAtlString name(OWN_NAME);
    for (const CVardoDirectoryPath& parent : parents_) {
        std::vector<CAtlString> names;
        parent.ListNames(names);
        for (const CAtlString& each : names) {
            if (each.Left(name.GetLength()) != name)
                continue;
            CVardoDirectoryPath folder(parent);
            folder.Append(each);
            // Before its files go, for that makes it younger.
            const bool isOlder = IsOlder(folder, age);
            RemoveOwn(folder, age);
            ::RemoveStaleFiles(folder, beginning, age);
            if (isOlder)
                FileSystem::RemoveDirectory(folder.GetDirectoryPathString());
        }
    }
}
