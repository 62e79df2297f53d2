// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Where the errors of a command line go.
#pragma once

#include "app/CActionParameter.h"
#include "app/CMultiValueParameter.h"

// Every error selects the error action, whatever was chosen before, and adds its detail to the list.
class CErrorParameter : public CActionParameter, public CMultiValueParameter {
public:
    CErrorParameter(Action& target, bool& selected, bool& gui, std::vector<CAtlString>& errors);

    // Takes the kind of the error and its detail; always true.
    bool SetValue(const CAtlString& kind, const CAtlString& detail) override;
    CAtlString GetError() const override { return {}; }
};
