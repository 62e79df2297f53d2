// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A command line, one argument a line.
#include <algorithm>
#include <boost/make_shared.hpp>

#include "app/CApplicationFactory.h"
#include "fuzz/Fuzzing.h"
#include "i18n/Language.h"
#include "support/FakeEnvironment.h"

namespace {

struct Result {
    bool ok;
    bool gui;
    CAtlString locale;
    bool operator==(const Result&) const = default;
};

Result Parse(std::vector<std::string> arguments) {
    static const auto environment = boost::make_shared<FakeEnvironment>();
    static const auto downloader = boost::make_shared<OnePageDownloader>();
    std::string program = "program";
    std::vector<char*> argv = {program.data()};
    std::transform(arguments.begin(), arguments.end(), std::back_inserter(argv),
                   [](std::string& argument) { return argument.data(); });
    CApplicationFactory factory(environment, downloader);
    const bool ok = factory.Parse(static_cast<int>(argv.size()), argv.data());
    Require(factory.IsGuiEnabled() || !ok, "only what is faulty goes without a window");
    return {ok, factory.IsGuiEnabled(), factory.GetLocale()};
}

// The same switch with the third of the prefixes.
std::string WithBackslash(const std::string& argument) {
    if (!argument.starts_with('-'))
        return argument;
    return "\\" + argument.substr(argument.starts_with("--") ? 2 : 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    SetLocaleOverride("xx");
    std::vector<std::string> arguments;
    std::vector<std::string> others;
    for (const std::string_view line : Split(View(data, size), '\n')) {
        arguments.emplace_back(line);
        others.push_back(WithBackslash(arguments.back()));
    }
    Require(Parse(arguments) == Parse(others), "the prefixes of a switch mean the same");
    return 0;
}
