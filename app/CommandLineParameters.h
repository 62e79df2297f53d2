// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The kinds of command-line parameters.
#pragma once

#include "app/CCmdLineContext.h"
#include "platform/text/CAtlString.h"

#include <boost/function.hpp>
#include <vector>

// One parameter, bound to the storage that it fills. A virtual base of every concrete parameter, so that a
// parameter made of two kinds has one interface. Does no I/O.
class ICmdLineParam {
public:
    virtual ~ICmdLineParam() = default;
    // Takes the parameter's name as written, without its switch prefix, and its value; false refuses it.
    virtual bool SetValue(const CAtlString& name, const CAtlString& value) = 0;
    // The text of a pending error; empty without one.
    virtual CAtlString GetError() const = 0;
};

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

// Stores the path as it was written: nothing is resolved or checked.
class CPathParameter : public CStringParameter {
public:
    using CStringParameter::CStringParameter;
};

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
    // An exclusive parameter, the default, is refused when an action was selected before.
    void SetExclusive(bool exclusive) { exclusive_ = exclusive; }
    // True when the command line has it and no other choice came before.
    bool IsChosen() const { return isChosen_; }

    // Refuses, and keeps name as the error text, when another choice was made before.
    bool SetValue(const CAtlString& name, const CAtlString& value) override;
    CAtlString GetError() const override { return error_; }

private:
    bool& selected_;
    bool& gui_;
    bool guiValue_ = false;
    bool exclusive_ = true;
    bool isChosen_ = false;
    Action& target_;
    Action action_;
    CAtlString error_;
};

// Every error selects the error action, whatever was chosen before, and adds its detail to the list.
class CErrorParameter : public CActionParameter, public CMultiValueParameter {
public:
    CErrorParameter(Action& target, bool& selected, bool& gui, std::vector<CAtlString>& errors);

    // Takes the kind of the error and its detail; always true.
    bool SetValue(const CAtlString& kind, const CAtlString& detail) override;
    CAtlString GetError() const override { return {}; }
};

// Fills the proxy of a context, which must outlive it.
class CProxyParameter : public CStringParameter {
public:
    explicit CProxyParameter(CCmdLineContext& context) : CStringParameter(context.proxy), context_(context) {}

    // The parameter's name when the proxy is to be used and its text is no address of a proxy. An empty text
    // is right: it means that there is no proxy.
    CAtlString GetError() const override;

private:
    const CCmdLineContext& context_;
};
