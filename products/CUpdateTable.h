// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The offers of an update description and the version that they are for.
#pragma once

#include "products/CUpdateEntry.h"
#include "products/CVersionString.h"
#include "products/CVersionStringRange.h"

#include <map>

// A value type: one offer for everybody, and offers for ranges of installed versions that come before it.
class CUpdateTable {
public:
    struct ByLowerEnd {
        bool operator()(const CVersionStringRange& a, const CVersionStringRange& b) const {
            return a.IsLess(b);
        }
    };

    using RangedOffers = std::map<CVersionStringRange, CUpdateEntry, ByLowerEnd>;

    // Adds an offer for the installed versions of a range. False, without a change, when another range has
    // the same lower end.
    bool AddRangedOffer(const CVersionStringRange& range, const CUpdateEntry& offer);
    void SetDefaultOffer(const CUpdateEntry& offer) { defaultOffer_ = offer; }
    void SetCurrentVersion(const CVersionString& version) { currentVersion_ = version; }

    // All that these give is valid until the table changes. The ranges are in the order of their lower ends.
    const CVersionString& GetCurrentVersion() const { return currentVersion_; }
    const RangedOffers& GetRangedOffers() const { return rangedOffers_; }
    const CUpdateEntry& GetDefaultOffer() const { return defaultOffer_; }
    // The offer of the lowest range that contains the current version, else the default one.
    const CUpdateEntry& ChooseOffer() const;
    // The range of the offer that ChooseOffer gives; null for the default one.
    const CVersionStringRange* ChooseRange() const;

private:
    RangedOffers::const_iterator FindRange() const;

    RangedOffers rangedOffers_;
    CUpdateEntry defaultOffer_;
    CVersionString currentVersion_;
};
