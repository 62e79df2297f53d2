// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/CommandLineParameters.h"

#include "net/ProxyAddress.h"

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
    isChosen_ = true;
    gui_ = guiValue_;
    return true;
}

CErrorParameter::CErrorParameter(Action& target, bool& selected, bool& gui, std::vector<CAtlString>& errors)
    : CActionParameter(target, selected, gui), CMultiValueParameter(errors) {
    SetExclusive(false);
}

bool CErrorParameter::SetValue(const CAtlString& kind, const CAtlString& detail) {
    CActionParameter::SetValue(kind, detail);
    CMultiValueParameter::SetValue(kind, detail);
    return true;
}

CAtlString CProxyParameter::GetError() const {
    const bool isUsed = context_.overrideProxy && !context_.proxy.IsEmpty();
    return isUsed && !ParseProxyAddress(context_.proxy) ? CAtlString(L"proxy") : CAtlString();
}
