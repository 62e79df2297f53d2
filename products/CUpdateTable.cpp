// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/CUpdateTable.h"

#include <algorithm>

void CUpdateTable::AddRangedOffer(const CVersionStringRange& range, const CUpdateEntry& offer) {
    rangedOffers_.try_emplace(range, offer);
}

const CUpdateEntry& CUpdateTable::ChooseOffer() const {
    const auto found = std::find_if(rangedOffers_.begin(), rangedOffers_.end(), [this](const auto& ranged) {
        return ranged.first.Contains(currentVersion_);
    });
    return found == rangedOffers_.end() ? defaultOffer_ : found->second;
}
