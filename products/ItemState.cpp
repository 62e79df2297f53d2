// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/ItemState.h"

#include "app/settings/DefaultSettings.h"
#include "platform/settings/SettingsStore.h"

ItemState StateOf(const IProduct& product, unsigned item, bool wasChecked) {
    if (product.IsHighlighted(item))
        return product.IsWanted(item) ? ItemState::NOTICE : ItemState::DISMISSED;
    if (!product.IsCurrent(item))
        return ItemState::OLDER;
    if (product.IsDisabled())
        return ItemState::DISABLED;
    if (!product.IsChecked(item))
        return wasChecked ? ItemState::FAILED : ItemState::NOT_CHECKED;
    if (!product.IsUpdateAvailable(item))
        return ItemState::CURRENT;
    return product.IsWanted(item) ? ItemState::UPDATE : ItemState::SKIPPED;
}

bool IsSkipped(const IProduct& product, unsigned item) {
    const CAtlString offered = product.GetOffer(item);
    return !offered.IsEmpty() &&
           ReadRegistryString(HKEY_CURRENT_USER, DefaultSettings::SKIPPED_KEY, product.GetKey()) == offered;
}

void SetSkipped(const IProduct& product, unsigned item, bool isSkipped) {
    WriteRegistryString(HKEY_CURRENT_USER, DefaultSettings::SKIPPED_KEY, product.GetKey(),
                        isSkipped ? product.GetOffer(item) : CAtlString());
}
