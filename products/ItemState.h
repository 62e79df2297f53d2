// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Why a row is as it is; the window and the report both use this.
#pragma once

#include "products/IProduct.h"

enum class ItemState {
    CURRENT,
    UPDATE,       // there is a newer version
    SKIPPED,      // there is one, and the user skips it
    DISABLED,     // another product keeps this one from being updated
    OLDER,        // a higher version is installed beside it
    NOTICE,       // a notification from the maker
    DISMISSED,    // one that the user has seen
    NOT_CHECKED,  // nobody tried
    FAILED,       // the check failed
    NOT_INSTALLED,
};

// The state of a product's item after a check, or without one. Never NOT_INSTALLED, for such a product has no
// item. GUI thread only.
ItemState StateOf(const IProduct& product, unsigned item, bool wasChecked);

// Whether the user skips the version that the item is offered. The user's settings keep one such version for
// each product; another version is wanted again. GUI thread only.
bool IsSkipped(const IProduct& product, unsigned item);
// Skips the version that the item is offered, or takes that back. The settings are written when this returns,
// if they can be.
void SetSkipped(const IProduct& product, unsigned item, bool isSkipped);
