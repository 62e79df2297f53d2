// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Finds the products of a list by the names that disablers use.
#pragma once

#include "platform/text/CAtlString.h"
#include "products/IProduct.h"

#include <map>
#include <utility>
#include <vector>

// Reads the keys of the products once, in its constructor, so that the time for all disablers grows only
// linearly with the list. Make it after FindInstalled. GUI thread only.
class CProductsByKey {
public:
    // Implicit, so that a list may be passed directly.
    CProductsByKey(const IProduct::List& products);  // NOLINT(google-explicit-constructor)

    const IProduct::List& GetAll() const { return products_; }
    // The first installed product and the first installed gallery content for each key, in the order of the
    // list. Others with the same key have the same installed versions.
    IProduct::List WithKeys(const std::vector<CAtlString>& keys) const;

private:
    IProduct::List products_;
    // Places in products_, by key and IProduct::OpensPage, which is false for gallery content alone.
    std::map<std::pair<CAtlString, bool>, std::size_t> places_;
};
