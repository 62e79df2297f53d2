// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/CUpdateReport.h"

#include "app/settings/CRecordKeeper.h"
#include "products/ProductListFiles.h"

#include <QUrl>
#include <algorithm>

namespace {

QString PathText(const CVardoFilePath& path) {
    return path.GetFilePathString().ToQString();
}

QString Reason(const CRecordKeeper& keeper) {
    if (!keeper.GetCheckUpdates())
        return "automatic checks are switched off";
    const QString interval = QString("the interval is %1 days").arg(keeper.GetInterval());
    if (keeper.GetLastChecked() == 0)
        return "there was no check yet; " + interval;
    const QDate last = QDate::fromJulianDay(keeper.GetLastChecked());
    return QString("the last check was on %1; %2").arg(last.toString(Qt::ISODate), interval);
}

// Where the user's list is fetched from, when that is not the host of the installed one: a sign that it may
// be forged. Empty when it is.
QString OtherHost(const Products& users, const Products& installed) {
    const QUrl newest(users.GetAddress().ToQString());
    if (!installed.IsLoaded() || newest.host() == QUrl(installed.GetAddress().ToQString()).host())
        return {};
    return newest.host().isEmpty() ? QString("nowhere") : newest.host();
}

// "due", and in "reason" why or why not, by the settings as they are.
QJsonObject SilentCheck(const QDate& today) {
    CRecordKeeper keeper;
    keeper.Load();
    return {{"due", keeper.IsCheckDue(static_cast<int>(today.toJulianDay()))}, {"reason", Reason(keeper)}};
}

}  // namespace

CUpdateReport::CUpdateReport(const boost::shared_ptr<IEnvironment>& environment,
                             const boost::shared_ptr<Downloader>& downloader)
    : environment_(environment), downloader_(downloader), controller_(environment) {}

bool CUpdateReport::Run(bool isOffline, bool isExplained) {
    isExplained_ = isExplained;
    isListed_ = controller_.LoadProductList();
    wasChecked_ = !isOffline;
    controller_.SetPrinter(deaf_);
    controller_.FindInstalled();
    if (wasChecked_) {
        controller_.SetDownloader(downloader_);
        controller_.CheckForUpdates();
    }
    MakeRows();
    return isListed_;
}

void CUpdateReport::MakeRows() {
    for (const auto& product : controller_.GetProducts()) {
        const unsigned items = product->GetItemCount();
        for (unsigned item = 0; item < items; ++item)
            entries_.push_back({MakeRow(*product, item, wasChecked_), product});
        if (items == 0)
            entries_.push_back({MakeRow(*product), product});
    }
}

QJsonArray CUpdateReport::ToJson() const {
    const QJsonObject common = isExplained_ ? ExplainCommon() : QJsonObject();
    QJsonArray rows;
    for (const auto& [row, product] : entries_) {
        if (row.state == ItemState::NOT_INSTALLED && !isExplained_)
            continue;
        QJsonObject object = ::ToJson(row);
        if (isExplained_)
            object["explain"] = Explain(*product, common);
        rows.append(object);
    }
    return rows;
}

int CUpdateReport::GetExitStatus() const {
    const auto has = [this](ItemState state) {
        return std::any_of(entries_.begin(), entries_.end(),
                           [state](const Entry& entry) { return entry.row.state == state; });
    };
    if (!isListed_ || has(ItemState::FAILED) || has(ItemState::NOT_CHECKED))
        return NOT_ALL_CHECKED;
    return has(ItemState::UPDATE) ? UPDATES : ALL_CURRENT;
}

QJsonObject CUpdateReport::ExplainCommon() const {
    QJsonObject check = SilentCheck(environment_->Today());
    if (wasChecked_)
        check["opensWindow"] = check["due"].toBool() && controller_.IsAnyUpdateAvailable();
    return {{"list", ExplainList()}, {"silentCheck", check}};
}

QJsonObject CUpdateReport::Explain(const IProduct& product, const QJsonObject& common) const {
    QJsonObject check = common["silentCheck"].toObject();
    if (wasChecked_)
        check["forThisProduct"] = check["due"].toBool() && CProductListController::HasWantedUpdate(product);
    QJsonObject explanation = controller_.GetExplanation(product)->ToJson();
    explanation["list"] = common["list"];
    explanation["silentCheck"] = check;
    return explanation;
}

QString CUpdateReport::WhyNot(const CVardoFilePath& list, bool isInstalled) const {
    const Verdict usersVerdict = controller_.GetUsersVerdict();
    if (!list.Exists())
        return "there is no such file";
    if (!isInstalled && usersVerdict != Verdict::COUNTS)
        return VerdictText(usersVerdict);
    Products other(environment_);
    return other.Load(list) ? "it is not newer" : "it holds no product";
}

QJsonObject CUpdateReport::ExplainList() const {
    const Products& list = *controller_.GetProductList();
    const CVardoFilePath users = UserProductList();
    const CVardoFilePath installed = InstalledProductList(*environment_);
    const bool isUsers = list.GetPath().GetFilePathString().Compare(users.GetFilePathString()) == 0;
    const CVardoFilePath other = isUsers ? installed : users;
    Products installedList(environment_);
    installedList.Load(installed);
    return {{"file", PathText(list.GetPath())},
            {"version", list.GetVersion().GetString().ToQString()},
            {"passedOver", PathText(other)},
            {"reason", WhyNot(other, isUsers)},
            {"otherHost", isUsers ? OtherHost(list, installedList) : QString()}};
}
