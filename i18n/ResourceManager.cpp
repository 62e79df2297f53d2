// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "i18n/ResourceManager.h"

#include <memory>

#include "i18n/CResourceManagerLinux.h"

namespace {

std::unique_ptr<CResourceManagerLinux>& Manager() {
    static std::unique_ptr<CResourceManagerLinux> manager;
    return manager;
}

}  // namespace

IVardoResourceManager* GetResourceManager() {
    if (!Manager())
        Manager() = std::make_unique<CResourceManagerLinux>();
    return Manager().get();
}

void DestroyResourceManager() {
    Manager().reset();
}

void SetupResourceManager(int languageId, const CAtlString& languagesFolder, const CAtlString& productName) {
    static int lastLanguageId = 0;
    if (languageId != lastLanguageId)
        DestroyResourceManager();
    lastLanguageId = languageId;
    GetResourceManager();
    Manager()->Init(languageId, languagesFolder, productName);
}
