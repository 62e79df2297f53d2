// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A command-line parameter that stores its value.
#pragma once

#include "app/ICmdLineParam.h"

// Fills one text, which must outlive it; the last value given wins.
class CStringParameter : public virtual ICmdLineParam {
public:
    explicit CStringParameter(CAtlString& target) : target_(target) {}

    bool SetValue(const CAtlString& /*name*/, const CAtlString& value) override {
        target_ = value;
        return true;
    }
    CAtlString GetError() const override { return {}; }

private:
    CAtlString& target_;
};
