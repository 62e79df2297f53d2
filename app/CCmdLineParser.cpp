// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/CCmdLineParser.h"

namespace {

ICmdLineParam* FindParameter(const std::map<CAtlString, ICmdLineParam*>& parameters, const CAtlString& name) {
    const auto found = parameters.find(name);
    return found == parameters.end() ? nullptr : found->second;
}

}  // namespace

const CAtlString CCmdLineParser::PARAM_NO_VALUE("PARAM_NO_VALUE");
const CAtlString CCmdLineParser::UNKNOWN_PARAM("UNKNOWN_PARAM");
const CAtlString CCmdLineParser::GENERIC_ERROR("GENERIC_ERROR");

bool StripSwitchPrefix(CAtlString& argument) {
    const bool dash = argument[0] == L'-';
    if (!dash && argument[0] != L'\\')
        return false;
    argument.Delete(0, dash && argument[1] == L'-' ? 2 : 1);
    return true;
}

void CCmdLineParser::AddValueParameter(const CAtlString& name, ICmdLineParam* parameter) {
    values_[name] = parameter;
}

void CCmdLineParser::AddFlagParameter(const CAtlString& name, ICmdLineParam* parameter) {
    flags_[name] = parameter;
}

bool CCmdLineParser::Parse(int argc, char** argv) {
    return Parse(Arguments(argv, argv + argc));
}

bool CCmdLineParser::Parse(int argc, wchar_t** argv) {
    return Parse(Arguments(argv, argv + argc));
}

bool CCmdLineParser::Parse(const Arguments& arguments) {
    bool ok = true;
    for (std::size_t index = 1; index < arguments.size(); ++index) {
        const Outcome outcome = TakeNext(arguments, index);
        if (outcome == Outcome::Stop)
            return false;
        ok = ok && outcome == Outcome::Taken;
    }
    return !ReportPendingError() && ok;
}

// Leaves index at the last argument that was used.
CCmdLineParser::Outcome CCmdLineParser::TakeNext(const Arguments& arguments, std::size_t& index) {
    CAtlString name = arguments[index];
    const auto outcomeOf = [](bool taken) { return taken ? Outcome::Taken : Outcome::Refused; };
    if (!StripSwitchPrefix(name))
        return default_ ? outcomeOf(default_->SetValue(CAtlString(), name)) : Outcome::Stop;
    if (ICmdLineParam* parameter = FindParameter(values_, name))
        return TakeValue(parameter, name, arguments, index);
    if (ICmdLineParam* parameter = FindParameter(flags_, name))
        return outcomeOf(parameter->SetValue(name, CAtlString()));
    return TakeColonForm(name);
}

CCmdLineParser::Outcome CCmdLineParser::TakeValue(ICmdLineParam* parameter, const CAtlString& name,
                                                  const Arguments& arguments, std::size_t& index) {
    if (index + 1 == arguments.size())
        return Report(PARAM_NO_VALUE, name);
    CAtlString next = arguments[index + 1];
    if (StripSwitchPrefix(next))
        return Report(PARAM_NO_VALUE, name);
    ++index;
    return parameter->SetValue(name, next) ? Outcome::Taken : Outcome::Refused;
}

CCmdLineParser::Outcome CCmdLineParser::TakeColonForm(const CAtlString& argument) {
    const int colon = argument.Find(L':');
    const CAtlString name = colon < 0 ? argument : argument.Left(colon);
    ICmdLineParam* parameter = colon < 0 ? nullptr : FindParameter(values_, name);
    if (!parameter)
        return Report(UNKNOWN_PARAM, name);
    return parameter->SetValue(name, argument.Mid(colon + 1)) ? Outcome::Taken : Outcome::Refused;
}

// Reports the first pending error: the default parameter's, then the others' in the order of their names.
bool CCmdLineParser::ReportPendingError() {
    std::vector<const ICmdLineParam*> all;
    if (default_)
        all.push_back(default_);
    for (const Parameters* parameters : {&values_, &flags_})
        for (const auto& [name, parameter] : *parameters)
            all.push_back(parameter);
    for (const ICmdLineParam* parameter : all) {
        const CAtlString text = parameter->GetError();
        if (text.IsEmpty())
            continue;
        Report(GENERIC_ERROR, text);
        return true;
    }
    return false;
}

CCmdLineParser::Outcome CCmdLineParser::Report(const CAtlString& kind, const CAtlString& detail) {
    error_->SetValue(kind, detail);
    return Outcome::Stop;
}
