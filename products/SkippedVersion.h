// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The user's word that a version on offer is not wanted.
#pragma once

#include "products/IProduct.h"

// It is kept in the user's settings, one version for each product. Another version is wanted again. GUI
// thread only.
bool IsSkipped(const IProduct& product, unsigned item);
// Keeps, or takes back, that the version that the item is offered is skipped. It is in the settings when this
// returns.
void SetSkipped(const IProduct& product, unsigned item, bool isSkipped);
