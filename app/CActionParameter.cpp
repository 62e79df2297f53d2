// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/CActionParameter.h"

void CActionParameter::SetAction(const Action& action, bool guiValue) {
    action_ = action;
    guiValue_ = guiValue;
}

bool CActionParameter::SetValue(const CAtlString& name, const CAtlString& /*value*/) {
    if (exclusive_ && selected_) {
        error_ = name;
        return false;
    }
    target_ = action_;
    selected_ = true;
    gui_ = guiValue_;
    return true;
}
