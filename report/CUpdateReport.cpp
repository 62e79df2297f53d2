// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/CUpdateReport.h"

#include "app/settings/CPolicy.h"
#include "platform/files/Addresses.h"
#include "platform/settings/SettingsStore.h"
#include "products/ProductListFiles.h"
#include "report/RunFacts.h"

#include <QUrl>
#include <algorithm>

namespace {

QString PathText(const CVardoFilePath& path) {
    return path.GetFilePathString().ToQString();
}

// Where the user's list is fetched from, when that is not the host of the installed one: a sign that it may
// be forged. Empty when it is.
QString OtherHost(const Products& users, const Products& installed) {
    const QUrl newest(users.GetAddress().ToQString());
    if (!installed.IsLoaded() || newest.host() == QUrl(installed.GetAddress().ToQString()).host())
        return {};
    return newest.host().isEmpty() ? QString("nowhere") : newest.host();
}

QString EndText(CUpdateReport::End end) {
    return end == CUpdateReport::End::DEADLINE ? "the deadline came first" : "the report was interrupted";
}

// True when the site, or a host on the way, answered; a proxy that wants credentials does not count.
bool WasAnswered(const TransferRecord& request) {
    return request.isGarbled ||
           (request.status != 0 && (request.status != 407 || request.proxyHost.IsEmpty()));
}

// Nothing is sent without a folder for the answer, nor to an address that is not http.
bool WasSent(const TransferRecord& request) {
    const bool hasGone = request.status != 0 || !request.error.IsEmpty();
    return hasGone && request.culprit != TransferRecord::Culprit::COMPUTER;
}

// The class of a failed request: of what came, or did not.
QString RequestCode(const TransferRecord& request) {
    if (request.culprit == TransferRecord::Culprit::COMPUTER)
        return "local";
    if (request.isGarbled)
        return "incomplete";
    if (request.status == 0)
        return request.error.IsEmpty() ? "unusable" : "unreachable";
    return request.status == 200 ? QString("incomplete") : "http-" + QString::number(request.status);
}

}  // namespace

CUpdateReport::CUpdateReport(const boost::shared_ptr<IEnvironment>& environment,
                             const boost::shared_ptr<Downloader>& downloader)
    : environment_(environment), downloader_(downloader), controller_(environment) {}

bool CUpdateReport::Run(const Scope& scope) {
    scope_ = scope;
    isListed_ = controller_.LoadProductList();
    if (!scope.isOffline)
        controller_.SetDownloader(downloader_);
    if (scope.isListFetched)
        FetchList();
    Observe();
    controller_.FindInstalled();
    isFolderRead_ = environment_->SharedFiles()->IsWhole();
    if (!scope.isOffline && !end_)
        controller_.CheckForUpdates();
    MakeRows();
    if (!scope.isOffline && !scope.isListFetched)
        LookForList();
    return isListed_;
}

void CUpdateReport::Stop(End end) {
    end_ = end;
    controller_.StopCheck();
    downloader_->Cancel();
}

void CUpdateReport::Observe() {
    controller_.SetPrinter(deaf_);
    controller_.SetCheckFinishedCallback([this](const boost::shared_ptr<IProduct>& product) {
        if (!end_)
            finished_.insert(product.get());
    });
}

void CUpdateReport::FetchList() {
    listAddress_ = WithoutPassword(controller_.GetProductList()->GetAddress());
    isListMissed_ = !controller_.UpdateProductList(false);
    listRefusal_ = controller_.GetListRefusal();
}

// Last, so that a silent server of the list costs no product its check.
void CUpdateReport::LookForList() {
    if (end_ || !isListed_ || !IsAnybodyThere())
        return;
    CProductListController looker(environment_);
    looker.LoadProductList();
    looker.SetDownloader(downloader_);
    looker.UpdateProductList(false);
    listRefusal_ = looker.GetListRefusal();
    const CVersionString& version = looker.GetProductList()->GetVersion();
    if (version.IsGreater(controller_.GetProductList()->GetVersion()))
        newerList_ = version.GetString().ToQString();
}

void CUpdateReport::MakeRows() {
    for (const auto& product : controller_.GetProducts()) {
        const unsigned items = product->GetItemCount();
        for (unsigned item = 0; item < items; ++item)
            entries_.push_back({MakeRow(*product, item, !scope_.isOffline), product});
        if (items == 0)
            entries_.push_back({MakeRow(*product), product});
    }
}

QJsonObject CUpdateReport::ToJson() const {
    QJsonObject check = SilentCheckFacts(environment_->Today());
    if (scope_.isExplained && !scope_.isOffline)
        check["opensWindow"] = check["due"].toBool() && controller_.IsAnyUpdateAvailable();
    QJsonObject report = RunFacts();
    report["list"] = ListFacts();
    report["settings"] = SettingsFacts();
    report["silentCheck"] = check;
    report["products"] = Rows(check["due"].toBool());
    return report;
}

QJsonArray CUpdateReport::Rows(bool isDue) const {
    QJsonArray rows;
    for (const auto& [row, product] : entries_) {
        if (row.state == ItemState::NOT_INSTALLED && !scope_.isExplained)
            continue;
        QJsonObject object = ::ToJson(row);
        object["error"] = Error(row, *product);
        if (scope_.isExplained) {
            QJsonObject explanation = Explanation(*product).ToJson();
            if (!scope_.isOffline)
                explanation["silentCheck"] = QJsonObject{
                    {"forThisProduct", isDue && CProductListController::HasWantedUpdate(*product)}};
            object["explain"] = explanation;
        }
        rows.append(object);
    }
    return rows;
}

const CExplanation& CUpdateReport::Explanation(const IProduct& product) const {
    return *controller_.GetExplanation(product);
}

QJsonValue CUpdateReport::Error(const ReportRow& row, const IProduct& product) const {
    if (row.state != ItemState::FAILED)
        return QJsonValue::Null;
    if (end_ && finished_.count(&product) == 0)
        return QJsonObject{{"code", *end_ == End::DEADLINE ? "deadline" : "interrupted"},
                           {"text", EndText(*end_)}};
    const CExplanation& explanation = Explanation(product);
    const auto& requests = explanation.GetRequests();
    if (!requests.empty() && !requests.back().succeeded)
        return QJsonObject{{"code", RequestCode(requests.back())}, {"text", FailureText(requests.back())}};
    return QJsonObject{{"code", "unusable"},
                       {"text", VerdictText(explanation.GetAnswer().value_or(Verdict::COUNTS))}};
}

bool CUpdateReport::IsAnybodyThere() const {
    bool isAsked = false;
    for (const Entry& entry : entries_) {
        const auto& requests = Explanation(*entry.product).GetRequests();
        isAsked = isAsked || std::any_of(requests.begin(), requests.end(), WasSent);
        if (std::any_of(requests.begin(), requests.end(), WasAnswered))
            return true;
    }
    return !isAsked;
}

int CUpdateReport::GetExitStatus() const {
    const auto has = [this](ItemState state) {
        return std::any_of(entries_.begin(), entries_.end(),
                           [state](const Entry& entry) { return entry.row.state == state; });
    };
    if (!isListed_ || !isFolderRead_ || (!end_ && !IsAnybodyThere()))
        return NOTHING_REPORTED;
    if (has(ItemState::FAILED))
        return SOME_FAILED;
    return has(ItemState::UPDATE) ? UPDATES : ALL_CURRENT;
}

QStringList CUpdateReport::GetRemarks() const {
    QStringList remarks;
    if (!isListed_)
        remarks << "there is no product list";
    else if (!end_ && !IsAnybodyThere())
        remarks << "no server was reached for any product";
    if (!isFolderRead_)
        remarks << "the folder of the installed products could not be read";
    if (!AreMachineStoresReadable())
        remarks << "the machine's settings cannot be read, so their policy does not count";
    remarks << CPolicy().refusals;
    if (end_)
        remarks << EndText(*end_);
    if (!listRefusal_.isEmpty())
        remarks << listRefusal_;
    else if (isListMissed_)
        remarks << "the site's product list could not be fetched";
    if (!newerList_.isEmpty())
        remarks << "the site has product list " + newerList_ + ", this report is of " +
                       controller_.GetProductList()->GetVersion().GetString().ToQString() +
                       "; --fetch-list uses the site's";
    return remarks;
}

QString CUpdateReport::WhyNot(const CVardoFilePath& list, bool isInstalled) const {
    const Verdict usersVerdict = controller_.GetUsersVerdict();
    if (!list.Exists())
        return "there is no such file";
    if (!isInstalled && usersVerdict != Verdict::COUNTS)
        return VerdictText(usersVerdict);
    Products other(environment_);
    if (!other.Load(list))
        return "it holds no product";
    return other.GetVersion().IsValid() ? "it is not newer" : "its Version is no version";
}

QJsonObject CUpdateReport::ListFacts() const {
    const Products& list = *controller_.GetProductList();
    QJsonObject facts = scope_.isExplained ? ExplainList() : QJsonObject();
    // A fetched one has been deleted.
    const QString file =
        list.GetPath().Exists() || listAddress_.isEmpty() ? PathText(list.GetPath()) : listAddress_;
    facts["file"] = isListed_ ? file : QString();
    facts["version"] = list.GetVersion().GetString().ToQString();
    facts["newer"] = newerList_;
    return facts;
}

QJsonObject CUpdateReport::ExplainList() const {
    const Products& list = *controller_.GetProductList();
    const CVardoFilePath users = UserProductList();
    const CVardoFilePath installed = InstalledProductList(*environment_);
    const bool isUsers = list.GetPath().GetFilePathString().Compare(users.GetFilePathString()) == 0;
    const CVardoFilePath other = isUsers ? installed : users;
    Products installedList(environment_);
    installedList.Load(installed);
    return {{"passedOver", PathText(other)},
            {"reason", WhyNot(other, isUsers)},
            {"otherHost", isUsers && users.Exists() ? OtherHost(list, installedList) : QString()}};
}
