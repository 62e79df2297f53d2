// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "i18n/ResourceManager.h"

#include <memory>

#include "i18n/CResourceManagerLinux.h"

namespace {

struct Setup {
    std::unique_ptr<CResourceManagerLinux> manager;
    int languageId = 0;
    CAtlString languagesFolder;
    CAtlString productName;
};

Setup& TheSetup() {
    static Setup setup;
    return setup;
}

CResourceManagerLinux& Manager() {
    auto& manager = TheSetup().manager;
    if (!manager)
        manager = std::make_unique<CResourceManagerLinux>();
    return *manager;
}

}  // namespace

IVardoResourceManager* GetResourceManager() {
    return &Manager();
}

void DestroyResourceManager() {
    TheSetup().manager.reset();
}

void SetupResourceManager(int languageId, const CAtlString& languagesFolder, const CAtlString& productName) {
    Setup& setup = TheSetup();
    if (languageId != setup.languageId)
        DestroyResourceManager();
    setup.languageId = languageId;
    setup.languagesFolder = languagesFolder;
    setup.productName = productName;
    Manager().Init(setup.languageId, setup.languagesFolder, setup.productName);
}
