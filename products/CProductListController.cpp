// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/CProductListController.h"

#include "platform/xml/XmlFile.h"
#include "products/CFetchedFile.h"
#include "products/CProductsByKey.h"
#include "products/ProductListFiles.h"

#include <QTimer>
#include <algorithm>
#include <boost/make_shared.hpp>

namespace {

std::vector<CAtlString> CheckAddresses(const IProduct::List& products) {
    std::vector<CAtlString> addresses;
    for (const auto& product : products)
        if (const CAtlString address = product->GetCheckAddress(); !address.IsEmpty())
            addresses.push_back(address);
    return addresses;
}

}  // namespace

CProductListController::CProductListController(const boost::shared_ptr<IEnvironment>& environment)
    : environment_(environment) {}

bool CProductListController::LoadProductList() {
    const auto installed = boost::make_shared<Products>(environment_);
    installed->Load(InstalledProductList(*environment_));
    const auto users = boost::make_shared<Products>(environment_);
    usersVerdict_ = LoadUsersList(*users, *installed);
    const bool mayCount = usersVerdict_ == Verdict::COUNTS || usersVerdict_ == Verdict::MISSING;
    products_ = mayCount && !users->GetVersion().IsLess(installed->GetVersion()) ? users : installed;
    return products_->IsLoaded();
}

Verdict CProductListController::LoadUsersList(Products& users, const Products& installed) const {
    const CVardoFilePath path = UserProductList();
    const CAtlStringA bytes = ReadFileBytes(path);
    const Verdict verdict = path.Exists() ? CFetchedFile::Judge(bytes, installed.GetAddress(),
                                                                environment_->SharedDataFolder(), QDate())
                                          : Verdict::MISSING;
    users.Load(path, verdict == Verdict::COUNTS ? bytes : CAtlStringA());
    return verdict;
}

bool CProductListController::UpdateProductList(bool isStored) {
    if (!downloader_ || !products_ || !products_->IsLoaded() || products_->GetAddress().IsEmpty())
        return false;
    const CFetchedFile fetched(downloader_.get(), products_->GetAddress(), environment_->SharedDataFolder(),
                               CFetchedFile::Kind::LIST);
    listRefusal_ = fetched.GetRefusal();
    const auto newest = boost::make_shared<Products>(environment_);
    const bool loaded = newest->Load(fetched.GetPath(), fetched.GetBytes());
    if (loaded && newest->GetVersion().IsGreater(products_->GetVersion())) {
        if (isStored)
            StoreProductList({fetched.GetBytes().begin(), fetched.GetBytes().end()}, *environment_);
        products_ = newest;
    }
    return loaded;
}

bool CProductListController::FindInstalled() {
    const IProduct::List products = GetProducts();
    Observe(products);
    // Read the folder once, not once for each product: that time would grow with the square of their number.
    environment_->LendSharedFiles(environment_->SharedFiles());
    bool found = false;
    for (const auto& product : products)
        found = product->FindInstalled() || found;
    environment_->LendSharedFiles(nullptr);
    const CProductsByKey all(products);
    for (const auto& product : products)
        product->ApplyDisablers(all);
    isFetching_ = false;
    return found;
}

void CProductListController::Observe(const IProduct::List& products) {
    explanations_.clear();
    for (const auto& product : products)
        product->SetObserver(explanations_.try_emplace(product.get(), *printer_).first->second);
}

const CExplanation* CProductListController::GetExplanation(const IProduct& product) const {
    const auto found = explanations_.find(&product);
    return found == explanations_.end() ? nullptr : &found->second;
}

void CProductListController::BeginFetching() {
    isFetching_ = true;
    if (downloader_)
        downloader_->FetchAhead(CheckAddresses(GetProducts()));
}

bool CProductListController::CheckForUpdates() {
    const IProduct::List products = GetProducts();
    isChecking_ = true;
    isStopped_ = false;
    if (downloader_)
        downloader_->SetFailureCallback(fetchFailed_);
    if (!isFetching_)
        BeginFetching();
    isFetching_ = false;
    if (fetchFailed_ && !listRefusal_.isEmpty())
        fetchFailed_(listRefusal_);
    QTimer patience;
    QObject::connect(&patience, &QTimer::timeout, [this] { StopCheck(); });
    if (timeLimit_.count() > 0)
        patience.start(timeLimit_);
    bool succeeded = false;
    for (const auto& product : products)
        if (!isStopped_)
            succeeded = CheckProduct(product) || succeeded;
    if (downloader_) {
        downloader_->FetchAhead({});
        downloader_->SetFailureCallback({});
        downloader_->SetTransferCallback({});
    }
    isChecking_ = false;
    lastCheckResult_ = succeeded && !isStopped_;
    return lastCheckResult_;
}

bool CProductListController::CheckProduct(const boost::shared_ptr<IProduct>& product) {
    if (checkStarted_)
        checkStarted_(product);
    product->SetDownloader(downloader_);
    const auto explanation = explanations_.find(product.get());
    if (downloader_ && explanation != explanations_.end())
        downloader_->SetTransferCallback(
            [explanation](const TransferRecord& record) { explanation->second.OnTransfer(record); });
    const bool succeeded = product->CheckForUpdates();
    if (checkFinished_)
        checkFinished_(product);
    return succeeded;
}

void CProductListController::StopCheck() {
    if (!isChecking_)
        return;
    isStopped_ = true;
    if (downloader_)
        downloader_->Cancel();
}

bool CProductListController::IsAnyUpdateAvailable() const {
    const IProduct::List products = GetProducts();
    return std::any_of(products.begin(), products.end(),
                       [](const auto& product) { return HasWantedUpdate(*product); });
}

bool CProductListController::HasWantedUpdate(const IProduct& product) {
    for (unsigned item = 0; item < product.GetItemCount(); ++item)
        if (product.IsUpdateAvailable(item) && product.IsWanted(item))
            return true;
    return false;
}

IProduct::List CProductListController::GetProducts() const {
    return products_ ? products_->GetProducts() : IProduct::List();
}
