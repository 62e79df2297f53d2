// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/OfferBorders.h"

#include <QStringList>
#include <limits>

CVersionString VersionAfter(const CVersionString& version) {
    QStringList numbers = version.GetString().ToQString().split(u'.');
    for (auto number = numbers.rbegin(); version.IsValid() && number != numbers.rend(); ++number) {
        const int value = number->toInt();
        *number = QString::number(value == std::numeric_limits<int>::max() ? 0 : value + 1);
        if (*number != "0")
            return CVersionString(CAtlString(numbers.join(u'.')));
    }
    return {};
}

std::set<CVersionString, ByVersion> OfferBorders(const CUpdateTable& table) {
    std::set<CVersionString, ByVersion> borders{table.GetDefaultOffer().version};
    for (const auto& [range, offer] : table.GetRangedOffers())
        borders.insert({range.GetFrom(), VersionAfter(range.GetTo()), offer.version});
    std::erase_if(borders, [](const CVersionString& version) { return !version.IsValid(); });
    return borders;
}
