// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/ProductListFiles.h"

#include "platform/CVardoDirectoryPath.h"
#include "products/Products.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace {

// Fetched files are for their user alone; the installed list is for everybody.
void MakeReadableForAll(const CVardoFilePath& file) {
    namespace fs = std::filesystem;
    std::error_code ignored;
    fs::permissions(CAtlStringA(file.GetFilePathString().GetString()).GetString(),
                    fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read,
                    fs::perm_options::add, ignored);
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

void StoreProductList(const CVardoFilePath& list, const IEnvironment& environment) {
    const CVardoFilePath installed = InstalledProductList(environment);
    if (list.CopyTo(installed, false)) {
        MakeReadableForAll(installed);
        return;
    }
    const CVardoFilePath users = UserProductList();
    CVardoDirectoryPath(users).Create();
    list.CopyTo(users, false);
}
