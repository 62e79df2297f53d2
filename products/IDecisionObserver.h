// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Receives the decisions of products, with their reasons.
#pragma once

#include "platform/files/CVardoFilePath.h"
#include "platform/text/CAtlString.h"
#include "products/CUpdateEntry.h"
#include "products/CVersionStringRange.h"
#include "products/Verdict.h"

// Called on the GUI thread at the time of each decision. Arguments are valid during the call. The default
// implementations do nothing.
class IDecisionObserver {
public:
    virtual ~IDecisionObserver() = default;

    // A file of this machine was looked at as the product's description. The version is what was read of it,
    // if anything. The path is empty when the place of the file is not known.
    virtual void OnLocalFile(const CVardoFilePath& /*file*/, Verdict /*verdict*/,
                             const CVersionString& /*installed*/) {}
    // True to get all comparisons through OnComparison; otherwise only the necessary ones are made.
    virtual bool WantsComparisons() const { return false; }
    // An installed version of another product (key) was compared with a disabler of this one (disabler: the
    // key that it names).
    virtual void OnComparison(const CAtlString& /*key*/, const CAtlString& /*disabler*/) {}
    // Another product that may disable this one is installed; disables: its version is in the range.
    virtual void OnDisabler(const CAtlString& /*key*/, const CVersionString& /*installed*/,
                            const CVersionStringRange& /*range*/, bool /*disables*/) {}
    // The remote file was fetched, or not, and read.
    virtual void OnRemoteFile(Verdict /*verdict*/) {}
    // The offer that applies, and the range of installed versions that it is for; null: for all of them.
    virtual void OnOffer(const CVersionStringRange* /*range*/, const CUpdateEntry& /*offer*/) {}
    // One category of gallery content.
    virtual void OnCategory(const CAtlString& /*id*/, const CAtlString& /*installed*/,
                            const CAtlString& /*published*/) {}
};

// The observer that writes to standard output: a line with both keys for each of the first thousand
// comparisons with a disabler. There is one for the whole process.
IDecisionObserver& ConsoleObserver();
