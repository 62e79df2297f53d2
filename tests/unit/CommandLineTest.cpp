// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The program's command line, up to the point where an action runs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <algorithm>
#include <boost/make_shared.hpp>

#include "app/CApplicationFactory.h"
#include "i18n/Language.h"
#include "net/ProxyAddress.h"
#include "support/FakeDownloader.h"
#include "support/FakeEnvironment.h"
#include "support/TextPrinting.h"

namespace {

struct Line {
    const char* name;
    std::vector<std::string> arguments;
    bool ok;
    // The action that reports errors has none.
    bool gui;
    const char* locale;
    friend void PrintTo(const Line& line, std::ostream* out) { *out << line.name; }
};

class CommandLine : public testing::TestWithParam<Line> {};

TEST_P(CommandLine, IsParsed) {
    SetLocaleOverride("fr");
    CApplicationFactory factory(boost::make_shared<FakeEnvironment>(), boost::make_shared<FakeDownloader>());
    std::vector<std::string> arguments = GetParam().arguments;
    std::string program = "no such program";
    std::vector<char*> argv = {program.data()};
    for (std::string& argument : arguments)
        argv.push_back(argument.data());
    EXPECT_EQ(factory.Parse(static_cast<int>(argv.size()), argv.data()), GetParam().ok);
    EXPECT_EQ(factory.IsGuiEnabled(), GetParam().gui);
    EXPECT_EQ(factory.GetLocale(), CAtlString(GetParam().locale));
    SetLocaleOverride("");
}

const Line LINES[] = {
    {"NothingGiven", {}, true, true, "fr"},
    {"EveryOption",
     {"-proxy:h", "-username", "u", "-password:-p", "-verbose", "-overrideproxy"},
     true,
     true,
     "fr"},
    {"ProxyWithAPort", {"-proxy", "[::1]:3128", "-overrideproxy"}, true, true, "fr"},
    {"NoProxy", {"-overrideproxy", "-proxy:"}, true, true, "fr"},
    {"PortThatIsNone", {"-silent", "-proxy", "h:x", "-overrideproxy"}, false, false, "fr"},
    {"PortThatIsNoneOfAProxyThatIsNotUsed", {"-proxy:h:x"}, true, true, "fr"},
    {"Dash", {"-locale", "de", "-silent"}, true, true, "de"},
    {"TwoDashes", {"--locale", "de"}, true, true, "de"},
    {"Backslash", {"\\locale", "de"}, true, true, "de"},
    {"Colon", {"-locale:de"}, true, true, "de"},
    {"OnlyTheFirstColonSplits", {"-locale:a:b"}, true, true, "a:b"},
    {"EmptyAfterColon", {"-locale", "x", "-locale:"}, true, true, "fr"},
    {"EmptyValue", {"-locale", "x", "-locale", ""}, true, true, "fr"},
    {"PrefixedValueAfterColon", {"-locale:-x"}, true, true, "-x"},
    {"ValueKeepsItsColon", {"-locale", "a:b"}, true, true, "a:b"},
    {"Utf8Value", {"-locale", "д/日本"}, true, true, "д/日本"},
    {"OtherCase", {"-Locale", "de"}, false, false, "fr"},
    {"ValueMissingAtEnd", {"-locale", "de", "-proxy"}, false, false, "de"},
    {"ValueMissingBeforeSwitch", {"-locale", "-silent"}, false, false, "fr"},
    {"ColonFormOfFlag", {"-verbose:1"}, false, false, "fr"},
    {"ColonFormOfUnknown", {"-what:1:2"}, false, false, "fr"},
    {"DashAlone", {"-"}, false, false, "fr"},
    {"ThreeDashes", {"---locale", "de"}, false, false, "fr"},
    {"OptionOfQt", {"-style", "motif"}, false, false, "fr"},
    {"SilentTwice", {"-silent", "-silent"}, false, false, "fr"},
    {"Plain", {"x"}, true, true, "fr"},
    {"EmptyIsPlain", {""}, true, true, "fr"},
    {"PlainThenSilent", {"x", "-silent"}, false, false, "fr"},
    {"SilentThenPlain", {"-silent", "x"}, false, true, "fr"},
    {"RefusalDoesNotEndTheParse", {"-silent", "x", "-locale", "de"}, false, true, "de"},
    {"ErrorEndsTheParse", {"-silent", "-what", "-locale", "de"}, false, false, "fr"},
};
INSTANTIATE_TEST_SUITE_P(, CommandLine, testing::ValuesIn(LINES),
                         [](const auto& line) { return std::string(line.param.name); });

TEST(ProxyAddresses, AreReadAsTheyAreWritten) {
    // Host, a blank and the port, or "-" for none; nothing: refused.
    const std::pair<const char*, const char*> rows[] = {
        {"Proxy.example", "Proxy.example -"},
        {"proxy:1", "proxy 1"},
        {" 10.0.0.1:65535\t", "10.0.0.1 65535"},
        {"b\u00FCcher_1:03128", "b\u00FCcher_1 3128"},
        {"[2001:db8::1]", "2001:db8::1 -"},
        {"[::1]:3128", "::1 3128"},
        {"2001:db8::1", "2001:db8::1 -"},
        {"HTTP://proxy:3128/", "proxy 3128"},
        {"http://[fe80::1%eth0]:8080", "fe80::1%eth0 8080"},
        {"", ""},
        {"http://", ""},
        {":3128", ""},
        {"[]:3128", ""},
        {"proxy:", ""},
        {"proxy:0", ""},
        {"proxy:65536", ""},
        {"proxy:+1", ""},
        {"proxy:80a", ""},
        {"proxy:1:2", ""},
        {"proxy:1\n2", ""},
        {"[proxy]:1", ""},
        {"[::1]3128", ""},
        {"[::1", ""},
        {"user@proxy:1", ""},
        {"user:word@proxy:1", ""},
        {"https://proxy:1", ""},
        {"proxy:1/", ""},
        {"http://proxy:1/path", ""},
    };
    for (const auto& [text, expected] : rows) {
        const auto address = ParseProxyAddress(text);
        const QString port = address && address->port ? QString::number(*address->port) : "-";
        EXPECT_EQ(address ? address->host.ToQString() + ' ' + port : "", expected) << text;
    }
}

}  // namespace

TEST(CommandLinePassword, IsOverwrittenOnceItHasBeenRead) {
    CApplicationFactory factory(boost::make_shared<FakeEnvironment>(), boost::make_shared<FakeDownloader>());
    std::string arguments[] = {"program", "-username", "u", "-password", "secret", "--password:secret"};
    char* argv[6];
    std::transform(std::begin(arguments), std::end(arguments), argv,
                   [](std::string& argument) { return argument.data(); });
    EXPECT_TRUE(factory.Parse(6, argv));
    EXPECT_THAT(arguments, testing::ElementsAre("program", "-username", "u", "-password", "******",
                                                "--password:******"));
}
