// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/CVersionStringRange.h"

#include <utility>

CVersionStringRange::CVersionStringRange(const CVersionString& from, const CVersionString& to)
    : from_(from), to_(to) {
    if (from_.IsGreater(to_))
        std::swap(from_, to_);
}

bool CVersionStringRange::Contains(const CVersionString& version) const {
    return !version.IsLess(from_) && !version.IsGreater(to_);
}

bool CVersionStringRange::IsLess(const CVersionStringRange& other) const {
    return from_.IsLess(other.from_);
}

bool CVersionStringRange::IsEqual(const CVersionStringRange& other) const {
    return from_.IsEqual(other.from_) && to_.IsEqual(other.to_);
}
