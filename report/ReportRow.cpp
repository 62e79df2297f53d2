// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/ReportRow.h"

#include "platform/files/Addresses.h"

namespace {

ReportState StateOf(const IProduct& product, unsigned item, bool wasChecked) {
    if (product.IsHighlighted(item))
        return product.IsWanted(item) ? ReportState::NOTICE : ReportState::DISMISSED;
    if (!product.IsCurrent(item))
        return ReportState::OLDER;
    if (product.IsDisabled())
        return ReportState::DISABLED;
    if (!product.IsChecked(item))
        return wasChecked ? ReportState::FAILED : ReportState::NOT_CHECKED;
    return product.IsUpdateAvailable(item) ? ReportState::UPDATE : ReportState::CURRENT;
}

}  // namespace

ReportRow MakeRow(const IProduct& product, unsigned item, bool wasChecked) {
    ReportRow row = MakeRow(product);
    row.installed = product.GetInstalledVersion(item).ToQString().trimmed();
    if (product.IsChecked(item))
        row.latest = product.GetLatestVersion(item).ToQString().trimmed();
    row.state = StateOf(product, item, wasChecked);
    if (product.HasAction(item))
        row.page = WithoutPassword(product.GetPage(item));
    return row;
}

ReportRow MakeRow(const IProduct& product) {
    ReportRow row;
    row.name = product.GetName();
    row.key = product.GetKey().ToQString();
    return row;
}

QString StateWord(ReportState state) {
    switch (state) {
        case ReportState::CURRENT:
            return "current";
        case ReportState::UPDATE:
            return "update";
        case ReportState::DISABLED:
            return "disabled";
        case ReportState::OLDER:
            return "older";
        case ReportState::NOTICE:
            return "notice";
        case ReportState::DISMISSED:
            return "dismissed";
        case ReportState::NOT_CHECKED:
            return "not checked";
        case ReportState::FAILED:
            return "failed";
        case ReportState::NOT_INSTALLED:
            break;
    }
    return "not installed";
}

QJsonObject ToJson(const ReportRow& row) {
    return {{"name", row.name},
            {"key", row.key},
            {"installed", row.installed},
            {"latest", row.latest},
            {"state", StateWord(row.state)},
            {"page", row.page}};
}
