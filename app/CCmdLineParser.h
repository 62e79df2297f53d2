// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Feeds the arguments of a command line to the parameters that they name.
#pragma once

#include "app/CommandLineParameters.h"

#include <map>
#include <vector>

// Removes the switch prefix of an argument: "--", "-" or "\". False, and no change, when it has none.
bool StripSwitchPrefix(CAtlString& argument);

// Knows parameters by their names, which are case-sensitive, and owns none of them. A value follows its
// parameter as the next argument ("-name value") or after a colon ("-name:value").
class CCmdLineParser {
public:
    // The kinds of errors, as the error parameter receives them. The detail is the parameter's name, and for
    // GENERIC_ERROR the error text of a parameter.
    static const CAtlString PARAM_NO_VALUE;
    static const CAtlString UNKNOWN_PARAM;
    static const CAtlString GENERIC_ERROR;

    // Registering a name again replaces its parameter.
    void AddValueParameter(const CAtlString& name, ICmdLineParam* parameter);
    void AddFlagParameter(const CAtlString& name, ICmdLineParam* parameter);
    // Receives arguments without prefix, under an empty name. Without one such an argument ends the parse.
    void SetDefaultParameter(ICmdLineParam* parameter) { default_ = parameter; }
    // Receives the errors; must be set before Parse.
    void SetErrorParameter(ICmdLineParam* parameter) { error_ = parameter; }

    // Parses the arguments after the first; narrow ones are UTF-8. The first error ends the parse, while a
    // value that its parameter refuses does not. True without either.
    bool Parse(int argc, char** argv);
    bool Parse(int argc, wchar_t** argv);

private:
    using Arguments = std::vector<CAtlString>;
    using Parameters = std::map<CAtlString, ICmdLineParam*>;
    // How one argument ended.
    enum class Outcome { Taken, Refused, Stop };

    bool Parse(const Arguments& arguments);
    Outcome TakeNext(const Arguments& arguments, std::size_t& index);
    Outcome TakeValue(ICmdLineParam* parameter, const CAtlString& name, const Arguments& arguments,
                      std::size_t& index);
    Outcome TakeColonForm(const CAtlString& argument);
    bool ReportPendingError();
    Outcome Report(const CAtlString& kind, const CAtlString& detail);

    ICmdLineParam* default_ = nullptr;
    ICmdLineParam* error_ = nullptr;
    Parameters values_;
    Parameters flags_;
};
