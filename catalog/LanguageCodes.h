// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The languages of the language tables in a catalog.
#pragma once

#include "catalog/CCatalog.h"

#include <QString>
#include <vector>

// Their codes, in the order of the tables; empty when there is no readable table.
std::vector<QString> LanguageCodes(const CCatalog& catalog);
