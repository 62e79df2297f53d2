// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Holds the current product list and drives the passes over it.
#pragma once

#include "net/IDownloader.h"
#include "platform/desktop/IEnvironment.h"
#include "products/CExplanation.h"
#include "products/IProduct.h"
#include "products/Products.h"

#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>
#include <chrono>
#include <map>

// Loads and refreshes the list, finds what is installed, checks for updates. GUI thread only; the workflow
// shares it with the main window. Callbacks are called on the same thread, inside CheckForUpdates.
class CProductListController {
public:
    using ProductCallback = boost::function<void(boost::shared_ptr<IProduct>)>;

    explicit CProductListController(const boost::shared_ptr<IEnvironment>& environment);
    virtual ~CProductListController() = default;

    // Fetches the list and the descriptions; without it nothing is fetched, and every check fails.
    void SetDownloader(const boost::shared_ptr<IDownloader>& downloader) { downloader_ = downloader; }
    // Sends all comparisons with disablers to printer in place of ConsoleObserver(); not owned.
    void SetPrinter(IDecisionObserver& printer) { printer_ = &printer; }
    // Called before and after each product's check; may be empty.
    void SetCheckStartedCallback(const ProductCallback& callback) { checkStarted_ = callback; }
    void SetCheckFinishedCallback(const ProductCallback& callback) { checkFinished_ = callback; }

    // Called during a check with the reason why a fetch failed, in words for the user. If the last fetched
    // list was refused, the first call gives the reason for that. May be empty.
    void SetFailureCallback(const IDownloader::FailureCallback& callback) { fetchFailed_ = callback; }

    // Takes the newer of the user's and the installed list file; the user's when neither is newer. True when
    // it holds a product. With the maker's key, the user's copy counts only with a good signature for the
    // installed one's address; the signature's last day does not count.
    bool LoadProductList();
    // COUNTS when the last LoadProductList accepted the user's copy of the list, else the reason why not.
    Verdict GetUsersVerdict() const { return usersVerdict_; }
    // Fetches the list from its own address. A newer one becomes current and, if isStored, is stored (in the
    // installation, else in the user's folder). True when a list was fetched and could be read, newer or not.
    bool UpdateProductList(bool isStored = true);
    // Why the last fetched list was refused, in words for the user; empty when it was not.
    const QString& GetListRefusal() const { return listRefusal_; }
    // Lets every product find what is installed, then lets them disable one another. True when anything was
    // found.
    bool FindInstalled();
    // Begins to fetch what CheckForUpdates will ask for, so that connections open while the caller does
    // something else. CheckForUpdates calls it unless it was called since FindInstalled.
    void BeginFetching();
    // Checks every product in order. True when any check succeeded and StopCheck was not called meanwhile.
    bool CheckForUpdates();
    // Ends a CheckForUpdates that takes longer, as StopCheck does. 0, the initial value, means no limit.
    void SetTimeLimit(std::chrono::milliseconds limit) { timeLimit_ = limit; }
    // Ends a CheckForUpdates that is under way, from an event inside it: the current product fails soon and
    // the rest is skipped; CheckForUpdates then returns false. Does nothing at any other time.
    void StopCheck();
    // Whether the last CheckForUpdates, or the one under way, was ended early.
    bool IsStopped() const { return isStopped_; }
    // What the last CheckForUpdates answered.
    bool GetLastCheckResult() const { return lastCheckResult_; }
    // True when some item has something new that the user wants to hear of.
    bool IsAnyUpdateAvailable() const;
    // The same for one product.
    static bool HasWantedUpdate(const IProduct& product);
    // How the result of a product of the current list came about since FindInstalled; null for any other.
    const CExplanation* GetExplanation(const IProduct& product) const;
    // The current list; null before LoadProductList.
    boost::shared_ptr<const Products> GetProductList() const { return products_; }
    // A copy: the list may be replaced while the caller walks it.
    IProduct::List GetProducts() const;

private:
    // Forgets what is known of earlier lists, and begins to listen to the products of this one.
    void Observe(const IProduct::List& products);
    bool CheckProduct(const boost::shared_ptr<IProduct>& product);
    // Reads the user's copy of the list, if it counts.
    Verdict LoadUsersList(Products& users, const Products& installed) const;

    Verdict usersVerdict_ = Verdict::NOT_READ;
    // Why a fetched list was refused, in words for the user.
    QString listRefusal_;
    boost::shared_ptr<Products> products_;
    std::map<const IProduct*, CExplanation> explanations_;
    IDecisionObserver* printer_ = &ConsoleObserver();
    boost::shared_ptr<IDownloader> downloader_;
    std::chrono::milliseconds timeLimit_{0};
    bool lastCheckResult_ = false;
    bool isChecking_ = false;
    bool isFetching_ = false;
    bool isStopped_ = false;
    ProductCallback checkStarted_;
    ProductCallback checkFinished_;
    IDownloader::FailureCallback fetchFailed_;
    boost::shared_ptr<IEnvironment> environment_;
};
