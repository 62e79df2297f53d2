// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The report: what is installed, what is offered, and how that came about.
#pragma once

#include "net/Downloader.h"
#include "platform/desktop/IEnvironment.h"
#include "products/CProductListController.h"
#include "report/ReportRow.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>
#include <boost/shared_ptr.hpp>
#include <optional>
#include <set>
#include <vector>

// Runs a check without storing a list. Writes only the fetched files, and deletes them. GUI thread only;
// serves one run.
class CUpdateReport {
public:
    // Exit statuses. Ignorance comes before news: the highest that applies.
    static constexpr int ALL_CURRENT = 0;
    static constexpr int UPDATES = 1;
    static constexpr int SOME_FAILED = 2;
    static constexpr int NOTHING_REPORTED = 3;

    // How far a run goes.
    struct Scope {
        // Fetches nothing.
        bool isOffline = false;
        // The site's list counts in this run, when it is newer.
        bool isListFetched = false;
        bool isExplained = false;
    };
    // Why a run ended before its time.
    enum class End { DEADLINE, INTERRUPTED };

    // The installed products are those of the environment; the downloader may be used for nothing else
    // meanwhile.
    CUpdateReport(const boost::shared_ptr<IEnvironment>& environment,
                  const boost::shared_ptr<Downloader>& downloader);

    // Loads the list, looks for what is installed and, unless offline, checks it and asks for the site's
    // list. False without a list.
    bool Run(const Scope& scope);
    // Ends a Run that is under way, from an event inside it: what has not been checked counts as failed.
    void Stop(End end);

    // After Run, as docs/report.schema.json has it: an object for each installed version. Explained, each has
    // an "explain", and products that are not installed are there as well.
    QJsonObject ToJson() const;
    // After Run: the status that the process ends with, one of those above.
    int GetExitStatus() const;
    // Whether the folder of the installed products could be listed; else the report would miss products.
    bool IsFolderRead() const { return isFolderRead_; }
    // After Run: further facts for the reader, a sentence each.
    QStringList GetRemarks() const;

private:
    void Observe();
    // Takes the site's list for this run, when it is newer.
    void FetchList();
    // Learns the version of the site's list, if that is newer.
    void LookForList();
    void MakeRows();
    // True when a request was answered, if only with "not found", or when there was no request.
    bool IsAnybodyThere() const;
    // isDue: a silent check is.
    QJsonArray Rows(bool isDue) const;
    const CExplanation& Explanation(const IProduct& product) const;
    // Why a product failed, as "code" and "text"; null when it did not.
    QJsonValue Error(const ReportRow& row, const IProduct& product) const;
    QJsonObject ListFacts() const;
    QJsonObject ExplainList() const;
    // Why a list was passed over for the other one; a refused one is not read.
    QString WhyNot(const CVardoFilePath& list, bool isInstalled) const;

    boost::shared_ptr<IEnvironment> environment_;
    boost::shared_ptr<Downloader> downloader_;
    CProductListController controller_;
    Scope scope_;
    bool isListed_ = false;
    // Hears nothing: comparisons are not printed.
    IDecisionObserver deaf_;
    // Where the site's list was fetched for this run, if it was; and whether that failed.
    QString listAddress_;
    bool isListMissed_ = false;
    bool isFolderRead_ = true;
    // Why the site's list was refused, if it was.
    QString listRefusal_;
    // The version of the site's list, when it is newer than the one in use.
    QString newerList_;
    std::optional<End> end_;
    // The products whose check has ended.
    std::set<const IProduct*> finished_;
    struct Entry {
        ReportRow row;
        boost::shared_ptr<IProduct> product;
    };
    std::vector<Entry> entries_;
};
