// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Finds the products of a list by the names that disablers use.
#pragma once

#include "platform/text/CAtlString.h"
#include "products/IProduct.h"

#include <map>
#include <vector>

// Reads the keys of the products once, in its constructor, so that the time for all disablers grows only
// linearly with the list. Make it after FindInstalled. GUI thread only.
class CProductsByKey {
public:
    // Implicit, so that a list may be passed directly.
    CProductsByKey(const IProduct::List& products);  // NOLINT(google-explicit-constructor)

    const IProduct::List& GetAll() const { return products_; }
    // The first installed product for each key, in the order of the list. Products with the same key have the
    // same installed versions, unless one is gallery content: a list must not give it a product's key.
    IProduct::List WithKeys(const std::vector<CAtlString>& keys) const;

private:
    IProduct::List products_;
    // Places in products_.
    std::map<CAtlString, std::size_t> places_;
};
