// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/SkippedVersion.h"

#include "app/settings/DefaultSettings.h"
#include "platform/settings/SettingsStore.h"

bool IsSkipped(const IProduct& product, unsigned item) {
    const CAtlString offered = product.GetOffer(item);
    int error = REGISTRY_OK;
    return !offered.IsEmpty() && ReadRegistryString(HKEY_CURRENT_USER, DefaultSettings::SKIPPED_KEY,
                                                    product.GetKey(), CAtlString(), error)
                                         .Compare(offered) == 0;
}

void SetSkipped(const IProduct& product, unsigned item, bool isSkipped) {
    WriteRegistryString(HKEY_CURRENT_USER, DefaultSettings::SKIPPED_KEY, product.GetKey(),
                        isSkipped ? product.GetOffer(item) : CAtlString());
}
