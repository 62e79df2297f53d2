// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Whom products tell what they decide, and why.
#pragma once

#include "platform/files/CVardoFilePath.h"
#include "platform/text/CAtlString.h"
#include "products/CUpdateEntry.h"
#include "products/CVersionStringRange.h"
#include "products/Verdict.h"

// Called on the GUI thread, by the code that decides, when it does. What is passed lives as long as the call.
// Nothing happens unless a derived class wants to know.
class IDecisionObserver {
public:
    virtual ~IDecisionObserver() = default;

    // A file of this machine was looked at as the product's description. The version is what was read of it,
    // if anything. The path is empty when the place of the file is not known.
    virtual void OnLocalFile(const CVardoFilePath& /*file*/, Verdict /*verdict*/,
                             const CVersionString& /*installed*/) {}
    // Whether OnComparison is to be called with all comparisons; without it only those are made that count.
    virtual bool WantsComparisons() const { return false; }
    // An installed version of another product, by that product's key, was compared with a disabler of this
    // one, by the key that the disabler names.
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

// One for the whole process. For each installed version that a disabler is compared with, it writes a line
// with the keys of both on standard output.
IDecisionObserver& ConsoleObserver();
