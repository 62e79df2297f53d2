// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "i18n/ResourceManager.h"

#include <memory>

#include "i18n/CResourceManagerLinux.h"

namespace {

std::unique_ptr<CResourceManagerLinux>& TheManager() {
    static std::unique_ptr<CResourceManagerLinux> manager;
    return manager;
}

CResourceManagerLinux& Manager() {
    if (!TheManager())
        TheManager() = std::make_unique<CResourceManagerLinux>();
    return *TheManager();
}

}  // namespace

IVardoResourceManager* GetResourceManager() {
    return &Manager();
}

void DestroyResourceManager() {
    TheManager().reset();
}

void SetupResourceManager(int languageId, const CAtlString& languagesFolder, const CAtlString& productName) {
    Manager().Init(languageId, languagesFolder, productName);
}
