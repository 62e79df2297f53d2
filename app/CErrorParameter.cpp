// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/CErrorParameter.h"

CErrorParameter::CErrorParameter(Action& target, bool& selected, bool& gui, std::vector<CAtlString>& errors)
    : CActionParameter(target, selected, gui), CMultiValueParameter(errors) {
    SetExclusive(false);
}

bool CErrorParameter::SetValue(const CAtlString& kind, const CAtlString& detail) {
    CActionParameter::SetValue(kind, detail);
    CMultiValueParameter::SetValue(kind, detail);
    return true;
}
