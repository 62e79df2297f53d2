// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/ReportRow.h"

#include "platform/files/Addresses.h"

namespace {

QString StateWord(ItemState state) {
    switch (state) {
        case ItemState::CURRENT:
            return "current";
        case ItemState::UPDATE:
            return "update";
        case ItemState::SKIPPED:
            return "skipped";
        case ItemState::DISABLED:
            return "disabled";
        case ItemState::OLDER:
            return "older";
        case ItemState::NOTICE:
            return "notice";
        case ItemState::DISMISSED:
            return "dismissed";
        case ItemState::NOT_CHECKED:
            return "not checked";
        case ItemState::FAILED:
            return "failed";
        case ItemState::NOT_INSTALLED:
            break;
    }
    return "not installed";
}

}  // namespace

ReportRow MakeRow(const IProduct& product, unsigned item, bool wasChecked) {
    ReportRow row = MakeRow(product);
    row.installed = product.GetPlainInstalledVersion(item).ToQString().trimmed();
    if (product.IsChecked(item))
        row.latest = product.GetPlainLatestVersion(item).ToQString().trimmed();
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

QJsonObject ToJson(const ReportRow& row) {
    return {{"name", row.name},
            {"key", row.key},
            {"installed", row.installed},
            {"latest", row.latest},
            {"state", StateWord(row.state)},
            {"page", row.page}};
}
