// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// One offer of an update description.
#pragma once

#include "platform/text/CAtlString.h"
#include "products/CVersionString.h"

// What is offered and how to get it; a text that the description lacks is empty.
struct CUpdateEntry {
    CVersionString version;
    // The installer's file name, and the address of the folder where it lies.
    CAtlString installFile;
    CAtlString installUrl;
    // As written in the description.
    CAtlString installSize;
    // A page about the update.
    CAtlString webPage;
    // For running the installer.
    CAtlString argument;
};
