// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A command-line parameter that chooses what the process does.
#pragma once

#include "app/CCmdLineContext.h"
#include "app/ICmdLineParam.h"

#include <boost/function.hpp>

// Puts its own action into the target, and its GUI value into the GUI flag. Of the exclusive action
// parameters that share a selected flag only the first one given succeeds. All that it is bound to must
// outlive it.
class CActionParameter : public virtual ICmdLineParam {
public:
    // An action of the process; what it returns is for its caller to interpret.
    using Action = boost::function<int(const CCmdLineContext&)>;

    CActionParameter(Action& target, bool& selected, bool& gui)
        : selected_(selected), gui_(gui), target_(target) {}

    // The action to select, and whether it needs a GUI.
    void SetAction(const Action& action, bool guiValue);
    // Exclusive, as a new parameter is: refuses when an action was selected before.
    void SetExclusive(bool exclusive) { exclusive_ = exclusive; }

    // Refused, and name kept as the error text, when another choice was made before.
    bool SetValue(const CAtlString& name, const CAtlString& value) override;
    CAtlString GetError() const override { return error_; }

private:
    bool& selected_;
    bool& gui_;
    bool guiValue_ = false;
    bool exclusive_ = true;
    Action& target_;
    Action action_;
    CAtlString error_;
};
