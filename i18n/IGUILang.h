// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Who knows which language the maker's software speaks.
#pragma once

#include "platform/text/CAtlString.h"

// A source of the language. GUI thread only.
class IGUILang {
public:
    virtual ~IGUILang() = default;
    // The language as a hexadecimal ID, or as a code when its ID is not known.
    virtual CAtlString GetLanguage() const = 0;
};
