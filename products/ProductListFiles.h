// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Where the two copies of the product list lie, and how a newer one is stored.
#pragma once

#include "platform/desktop/IEnvironment.h"
#include "platform/files/CVardoFilePath.h"

#include <string_view>

// The copy that was installed with the program.
CVardoFilePath InstalledProductList(const IEnvironment& environment);

// The user's copy, below HOME. Empty when HOME is unset, empty, or invalid UTF-8.
CVardoFilePath UserProductList();

// Puts a list with these bytes in the installed one's place or, when that cannot be replaced, in the user's:
// in one step, so that a reader finds either the whole old list or the whole new one. A symbolic link in
// either place is replaced, not its target. Nothing is reported: a list that could not be stored is fetched
// again at the next check.
void StoreProductList(std::string_view list, const IEnvironment& environment);
