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
