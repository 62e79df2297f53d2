// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// How the result of one product came about.
#pragma once

#include "net/Transfer.h"
#include "products/IDecisionObserver.h"
#include "products/Verdict.h"

#include <QJsonObject>
#include <QString>
#include <optional>
#include <vector>

// Why a file does not count, in words; empty when it does.
QString VerdictText(Verdict verdict);

// Keeps the first 100 facts of each kind that it is told. docs/report.schema.json describes the JSON. GUI
// thread only.
class CExplanation : public IDecisionObserver {
public:
    // Passes comparisons on to printer, which must outlive it, and does not keep them.
    explicit CExplanation(IDecisionObserver& printer) : printer_(&printer) {}

    void OnLocalFile(const CVardoFilePath& file, Verdict verdict, const CVersionString& installed) override;
    bool WantsComparisons() const override { return printer_->WantsComparisons(); }
    void OnComparison(const CAtlString& key, const CAtlString& disabler) override;
    void OnDisabler(const CAtlString& key, const CVersionString& installed, const CVersionStringRange& range,
                    bool disables) override;
    void OnRemoteFile(Verdict verdict) override { answer_ = verdict; }
    void OnOffer(const CVersionStringRange* range, const CUpdateEntry& offer) override;
    void OnCategory(const CAtlString& id, const CAtlString& installed, const CAtlString& published) override;
    void OnTransfer(const TransferRecord& record) { requests_.push_back(record); }

    // In the order of their ends.
    const std::vector<TransferRecord>& GetRequests() const { return requests_; }
    // Nothing before the remote file was judged.
    std::optional<Verdict> GetAnswer() const { return answer_; }
    QJsonObject ToJson() const;

private:
    struct LocalFile {
        CVardoFilePath file;
        Verdict verdict;
        CVersionString installed;
    };
    struct Disabler {
        CAtlString key;
        CVersionString installed;
        CVersionStringRange range;
        bool disables;
    };
    struct Category {
        CAtlString id;
        CAtlString installed;
        CAtlString published;
    };
    struct Offer {
        CVersionString version;
        std::optional<CVersionStringRange> range;
    };

    // Kept as told: JSON would take most of the memory of a long list's check.
    std::vector<LocalFile> files_;
    std::vector<Disabler> disablers_;
    std::vector<TransferRecord> requests_;
    std::vector<Category> categories_;
    std::optional<Verdict> answer_;
    std::optional<Offer> offer_;
    IDecisionObserver* printer_;
};

// A paragraph about the product of a row, made from the row's "name", "key" and "explain".
QString ExplanationText(const QJsonObject& row);
// The part of the report that is common to all products: the list, and whether a silent check is due.
QString CommonExplanation(const QJsonObject& report);
