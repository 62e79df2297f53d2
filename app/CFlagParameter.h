// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A command-line parameter without a value.
#pragma once

#include "app/ICmdLineParam.h"

// Sets one flag, which must outlive it, to true.
class CFlagParameter : public virtual ICmdLineParam {
public:
    explicit CFlagParameter(bool& target) : target_(target) {}

    bool SetValue(const CAtlString& /*name*/, const CAtlString& /*value*/) override {
        target_ = true;
        return true;
    }
    CAtlString GetError() const override { return {}; }

private:
    bool& target_;
};
