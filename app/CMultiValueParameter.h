// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A command-line parameter that may be given several times.
#pragma once

#include "app/ICmdLineParam.h"

#include <vector>

// Appends each value to a list, which must outlive it.
class CMultiValueParameter : public virtual ICmdLineParam {
public:
    explicit CMultiValueParameter(std::vector<CAtlString>& target) : target_(target) {}

    bool SetValue(const CAtlString& /*name*/, const CAtlString& value) override {
        target_.push_back(value);
        return true;
    }
    CAtlString GetError() const override { return {}; }

private:
    std::vector<CAtlString>& target_;
};
