// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/CUpdateTable.h"

#include <algorithm>

bool CUpdateTable::AddRangedOffer(const CVersionStringRange& range, const CUpdateEntry& offer) {
    return rangedOffers_.try_emplace(range, offer).second;
}

const CUpdateEntry& CUpdateTable::ChooseOffer() const {
    const auto found = FindRange();
    return found == rangedOffers_.end() ? defaultOffer_ : found->second;
}

const CVersionStringRange* CUpdateTable::ChooseRange() const {
    const auto found = FindRange();
    return found == rangedOffers_.end() ? nullptr : &found->first;
}

CUpdateTable::RangedOffers::const_iterator CUpdateTable::FindRange() const {
    return std::find_if(rangedOffers_.begin(), rangedOffers_.end(),
                        [this](const auto& ranged) { return ranged.first.Contains(currentVersion_); });
}
