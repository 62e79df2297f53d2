// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// One offer of an update description.
#pragma once

#include "platform/text/CAtlString.h"
#include "products/CVersionString.h"
#include "signing/CInstallerSeal.h"
#include "signing/CMinisignSignature.h"

// What is offered and how to get it; a text that the description lacks is empty.
struct CUpdateEntry {
    CVersionString version;
    // The installer's file name, and the address of the folder where it lies.
    CAtlString installFile;
    CAtlString installUrl;
    // The installer's size, as the description gives it.
    CAtlString installSize;
    // A page about the update.
    CAtlString webPage;
    // The program starts the installer with it.
    CAtlString argument;
};

// What a signature of the entry's installer must say, today and in whatever spelling of the version.
inline CInstallerSeal::Offer SealedOffer(const CUpdateEntry& entry) {
    return {.file = entry.installFile,
            .argument = entry.argument,
            .isVersion = [version = entry.version](
                             const CAtlString& text) { return CVersionString(text).IsEqual(version); },
            .today = TodayInUtc()};
}
