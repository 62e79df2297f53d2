// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The program's own command line, up to the point where an action runs.
#include "app/CApplicationFactory.h"

#include <gtest/gtest.h>

#include "i18n/Language.h"
#include "support/FakeDownloader.h"
#include "support/FakeEnvironment.h"
#include "support/TextPrinting.h"

#include <boost/make_shared.hpp>

namespace {

TEST(ApplicationFactory, KnowsTheOptionsOfTheProgram) {
    SetLocaleOverride("fr");
    const struct {
        std::vector<std::string> arguments;
        bool ok;
        bool gui;
        const char* locale;
    } lines[] = {
        {{}, true, true, "fr"},
        {{"-locale", "de", "-silent"}, true, true, "de"},
        {{"-locale:"}, true, true, "fr"},
        {{"-proxy:h", "-username", "u", "-password:-p", "-verbose", "-overrideproxy", "x"}, true, true, "fr"},
        {{"-silent", "x"}, false, true, "fr"},
        {{"x", "-silent"}, false, false, "fr"},
        {{"-unknown", "-locale", "de"}, false, false, "fr"},
        {{"-proxy"}, false, false, "fr"},
    };
    for (const auto& line : lines) {
        CApplicationFactory factory(boost::make_shared<FakeEnvironment>(),
                                    boost::make_shared<FakeDownloader>());
        std::vector<std::string> all = {"no such program"};
        all.insert(all.end(), line.arguments.begin(), line.arguments.end());
        std::vector<char*> argv;
        for (std::string& argument : all)
            argv.push_back(argument.data());
        const std::string name = testing::PrintToString(line.arguments);
        EXPECT_EQ(factory.Parse(static_cast<int>(argv.size()), argv.data()), line.ok) << name;
        EXPECT_EQ(factory.IsGuiEnabled(), line.gui) << name;
        EXPECT_EQ(factory.GetLocale(), CAtlString(line.locale)) << name;
    }
    SetLocaleOverride("");
}

}  // namespace
