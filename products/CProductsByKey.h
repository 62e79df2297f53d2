// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The products of a list, to be found by the names that disablers use.
#pragma once

#include "platform/text/CAtlString.h"
#include "products/IProduct.h"

#include <map>
#include <vector>

// Takes the keys of the products once, in its constructor; so the disablers of a whole list cost time that
// grows with the list alone. Made after FindInstalled. GUI thread only.
class CProductsByKey {
public:
    // Implicit: any list will do where one of these is asked for.
    CProductsByKey(const IProduct::List& products);  // NOLINT(google-explicit-constructor)

    const IProduct::List& GetAll() const { return products_; }
    // For each of the keys the first installed product that has it, in the order of the list: what has the
    // same key has the same installed versions.
    IProduct::List WithKeys(const std::vector<CAtlString>& keys) const;

private:
    IProduct::List products_;
    // Places in products_.
    std::map<CAtlString, std::size_t> places_;
};
