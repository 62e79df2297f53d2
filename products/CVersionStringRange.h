// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// From one version to another.
#pragma once

#include "products/CVersionString.h"

// An inclusive range of versions; a value type, any thread may use its own objects. Ends that are given in
// the wrong order are exchanged. An end made of an empty text sorts below every valid version: a range with
// one given end reaches from there down, and a range without ends covers no valid version.
class CVersionStringRange {
public:
    CVersionStringRange(const CVersionString& from, const CVersionString& to);
    CVersionStringRange(const CVersionStringRange&) = default;
    CVersionStringRange(CVersionStringRange&&) noexcept = default;
    CVersionStringRange& operator=(const CVersionStringRange&) = default;
    CVersionStringRange& operator=(CVersionStringRange&&) noexcept = default;
    virtual ~CVersionStringRange() = default;

    // The lower and the upper end.
    const CVersionString& GetFrom() const { return from_; }
    const CVersionString& GetTo() const { return to_; }

    bool Contains(const CVersionString& version) const;
    // The order of ranges: that of their lower ends alone.
    bool IsLess(const CVersionStringRange& other) const;
    // Both ends are equal.
    bool IsEqual(const CVersionStringRange& other) const;

private:
    CVersionString from_;
    CVersionString to_;
};
