// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/CUpdateTable.h"

#include <algorithm>

const CUpdateEntry* CUpdateTable::AddRangedOffer(const CVersionStringRange& range,
                                                 const CUpdateEntry& offer) {
    const auto [place, isNew] = rangedOffers_.try_emplace(range, offer);
    return isNew ? &place->second : nullptr;
}

const CUpdateEntry& CUpdateTable::ChooseOffer() const {
    const auto found = std::find_if(rangedOffers_.begin(), rangedOffers_.end(), [this](const auto& ranged) {
        return ranged.first.Contains(currentVersion_);
    });
    return found == rangedOffers_.end() ? defaultOffer_ : found->second;
}
