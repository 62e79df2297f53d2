// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Where, among the installed versions, a description's offer may change.
#pragma once

#include "products/CUpdateTable.h"

#include <set>

struct ByVersion {
    bool operator()(const CVersionString& a, const CVersionString& b) const { return a.IsLess(b); }
};

// The next higher version: four whole numbers leave nothing in between. Invalid after the highest version.
CVersionString VersionAfter(const CVersionString& version);

// The first version of each range, the one after its last, and each offered version, which is no update of
// itself.
std::set<CVersionString, ByVersion> OfferBorders(const CUpdateTable& table);
