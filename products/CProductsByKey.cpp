// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/CProductsByKey.h"

#include <set>

CProductsByKey::CProductsByKey(const IProduct::List& products) : products_(products) {
    for (std::size_t place = 0; place < products_.size(); ++place)
        if (products_[place]->GetItemCount() > 0)
            places_.try_emplace({products_[place]->GetKey(), products_[place]->OpensPage()}, place);
}

IProduct::List CProductsByKey::WithKeys(const std::vector<CAtlString>& keys) const {
    std::set<std::size_t> found;
    for (const CAtlString& key : keys)
        for (const bool opensPage : {false, true})
            if (const auto place = places_.find({key, opensPage}); place != places_.end())
                found.insert(place->second);
    IProduct::List list;
    for (const std::size_t place : found)
        list.push_back(products_[place]);
    return list;
}
