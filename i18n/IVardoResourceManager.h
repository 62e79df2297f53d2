// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Who has the texts of the user interface.
#pragma once

#include "platform/text/CAtlString.h"

class IVardoResourceManager {
public:
    virtual ~IVardoResourceManager() = default;
    // The text for a key (UTF-8), or the key itself when there is none. Any thread, while nothing is loaded.
    virtual CAtlString GetString(const char* key) const = 0;
};
