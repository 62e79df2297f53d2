// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/ProductListFiles.h"

#include "platform/files/CVardoDirectoryPath.h"
#include "platform/files/FileReplacement.h"
#include "platform/files/FileSystem.h"
#include "products/Products.h"

#include <cstdlib>
#include <cstring>

#include <sys/stat.h>

namespace {

// Everybody may read the installed list, only its user the user's.
constexpr mode_t INSTALLED_MODE = S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH;
constexpr mode_t USERS_MODE = S_IRUSR | S_IWUSR;

// Makes the missing folders of a path for their owner alone, whatever the umask allows.
void MakePrivately(const CVardoDirectoryPath& folder) {
    CVardoDirectoryPath parent(folder);
    if (folder.Exists() || !parent.RemoveLastComponent())
        return;
    MakePrivately(parent);
    mkdir(FileSystem::SystemPath(folder.GetDirectoryPathString()).c_str(), S_IRWXU);
}

}  // namespace

CVardoFilePath InstalledProductList(const IEnvironment& environment) {
    return CVardoDirectoryPath::Combine(environment.SharedDataFolder(), Products::FILE_NAME);
}

CVardoFilePath UserProductList() {
    const char* home = std::getenv("HOME");
    const CAtlString decoded(home);
    if (!home || decoded.IsEmpty() || std::strcmp(CAtlStringA(decoded.GetString()).GetString(), home) != 0)
        return CVardoFilePath();
    CVardoDirectoryPath folder(decoded);
    folder.Append(L".VARDO Technologies/Product Update");
    return CVardoDirectoryPath::Combine(folder, Products::FILE_NAME);
}

void StoreProductList(std::string_view list, const IEnvironment& environment) {
    if (ReplaceFile(list, InstalledProductList(environment), INSTALLED_MODE))
        return;
    const CVardoFilePath users = UserProductList();
    MakePrivately(CVardoDirectoryPath(users));
    ReplaceFile(list, users, USERS_MODE);
}
