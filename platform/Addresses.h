// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// How a folder's address and a file's name become one address. There are two rules, each for the files that
// say so.
#pragma once

#include "platform/CAtlString.h"

// The folder as a folder: with a "/" appended unless it is empty or ends in one.
CAtlString WithTrailingSlash(const CAtlString& folder);

// The folder without its trailing run of "/", then without its trailing run of "\", then "/" and the file
// name.
CAtlString JoinTrimmed(const CAtlString& folder, const CAtlString& fileName);
