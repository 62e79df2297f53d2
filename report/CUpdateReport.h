// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The report: what is installed, what is offered, and how that came about.
#pragma once

#include "net/Downloader.h"
#include "platform/desktop/IEnvironment.h"
#include "products/CProductListController.h"
#include "report/ReportRow.h"

#include <QDate>
#include <QJsonArray>
#include <QJsonObject>
#include <boost/shared_ptr.hpp>
#include <vector>

// Goes the way of a check, but for the refresh of the list. Writes nothing but the files that are fetched,
// which are deleted. GUI thread only; serves one run.
class CUpdateReport {
public:
    // Exit statuses. Ignorance comes before news: the highest that applies.
    static constexpr int ALL_CURRENT = 0;
    static constexpr int UPDATES = 1;
    static constexpr int NOT_ALL_CHECKED = 2;

    CUpdateReport(const boost::shared_ptr<IEnvironment>& environment,
                  const boost::shared_ptr<Downloader>& downloader);

    // Loads the list, looks for what is installed and, unless offline, checks it. False without a list.
    bool Run(bool isOffline, bool isExplained);

    // After Run: an object for each installed version. Explained, each has an "explain", and products that
    // are not installed are there as well.
    QJsonArray ToJson() const;
    // After Run: what every "explain" says of the "list" and of a "silentCheck". With no row as well.
    QJsonObject ExplainCommon() const;
    int GetExitStatus() const;

private:
    void MakeRows();
    QJsonObject Explain(const IProduct& product, const QJsonObject& common) const;
    QJsonObject ExplainList() const;
    // Why a list was passed over for the other one; a refused one is not read.
    QString WhyNot(const CVardoFilePath& list, bool isInstalled) const;

    boost::shared_ptr<IEnvironment> environment_;
    boost::shared_ptr<Downloader> downloader_;
    CProductListController controller_;
    bool isListed_ = false;
    bool wasChecked_ = false;
    bool isExplained_ = false;
    // Hears nothing: comparisons are not printed.
    IDecisionObserver deaf_;
    struct Entry {
        ReportRow row;
        boost::shared_ptr<IProduct> product;
    };
    std::vector<Entry> entries_;
};
