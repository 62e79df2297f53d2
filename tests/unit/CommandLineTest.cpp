// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The parser and its parameters, wired with a grammar that has one of each kind.
#include <gtest/gtest.h>

#include "app/CCmdLineParser.h"
#include "app/CErrorParameter.h"
#include "app/CFlagParameter.h"
#include "app/CPathParameter.h"
#include "support/TextPrinting.h"

#include <string>
#include <vector>

namespace {

// Records in one line what was parsed: "action gui path many,many verbose | error,error".
class Grammar {
public:
    Grammar() {
        silent_.SetAction([](const CCmdLineContext&) { return 1; }, true);
        default_.SetAction([](const CCmdLineContext&) { return 2; }, true);
        errors_.SetAction([](const CCmdLineContext&) { return 3; }, false);
        action_ = [](const CCmdLineContext&) { return 0; };
        parser_.AddValueParameter("path", &path_);
        parser_.AddValueParameter("many", &many_);
        parser_.AddValueParameter("both", &path_);
        parser_.AddFlagParameter("both", &verbose_);
        parser_.AddFlagParameter("verbose", &verbose_);
        parser_.AddFlagParameter("silent", &silent_);
        parser_.SetErrorParameter(&errors_);
        parser_.SetDefaultParameter(&default_);
    }
    CCmdLineParser& Parser() { return parser_; }

    std::string Parse(const std::vector<std::string>& arguments) {
        std::vector<std::string> all = {"program"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        std::vector<char*> argv;
        for (std::string& argument : all)
            argv.push_back(argument.data());
        const bool ok = parser_.Parse(static_cast<int>(argv.size()), argv.data());
        return std::string(ok ? "ok " : "failed ") + Parsed();
    }
    std::string Parsed() const {
        const std::string actions[] = {"none", "silent", "default", "error"};
        return actions[action_({})] + (gui_ ? " gui" : " plain") + " [" + Text(pathValue_) + "] [" +
               Join(manyValues_) + "]" + (verboseValue_ ? " verbose" : "") + " |" + Join(context_.errors);
    }

private:
    static std::string Text(const CAtlString& text) { return text.ToQString().toStdString(); }
    static std::string Join(const std::vector<CAtlString>& texts) {
        std::string all;
        for (const CAtlString& text : texts)
            all += Text(text) + ";";
        return all;
    }

    CCmdLineContext context_;
    CAtlString pathValue_;
    std::vector<CAtlString> manyValues_;
    bool verboseValue_ = false;
    bool selected_ = false;
    bool failed_ = false;
    bool gui_ = true;
    CActionParameter::Action action_;
    CPathParameter path_{pathValue_};
    CMultiValueParameter many_{manyValues_};
    CFlagParameter verbose_{verboseValue_};
    CActionParameter silent_{action_, selected_, gui_};
    CActionParameter default_{action_, selected_, gui_};
    CErrorParameter errors_{action_, failed_, gui_, context_.errors};
    CCmdLineParser parser_;
};

struct Line {
    const char* name;
    std::vector<std::string> arguments;
    std::string parsed;
};

void PrintTo(const Line& line, std::ostream* out) {
    *out << line.name;
}

class CommandLine : public testing::TestWithParam<Line> {};

TEST_P(CommandLine, IsParsed) {
    EXPECT_EQ(Grammar().Parse(GetParam().arguments), GetParam().parsed);
}

const std::vector<Line> LINES = {
    {"NothingGiven", {}, "ok none gui [] [] |"},
    {"Dash", {"-path", "fr"}, "ok none gui [fr] [] |"},
    {"TwoDashes", {"--path", "fr"}, "ok none gui [fr] [] |"},
    {"Backslash", {"\\path", "fr"}, "ok none gui [fr] [] |"},
    {"Colon", {"-path:fr"}, "ok none gui [fr] [] |"},
    {"OnlyTheFirstColonSplits", {"-path:a:b"}, "ok none gui [a:b] [] |"},
    {"EmptyAfterColon", {"-path", "x", "-path:"}, "ok none gui [] [] |"},
    {"PrefixedValueAfterColon", {"-path:-x"}, "ok none gui [-x] [] |"},
    {"ValueKeepsItsColon", {"-path", "a:b"}, "ok none gui [a:b] [] |"},
    {"EmptyValue", {"-path", ""}, "ok none gui [] [] |"},
    {"Utf8Value", {"-path", "д/日本"}, "ok none gui [д/日本] [] |"},
    {"ManyValues", {"-many", "a", "-verbose", "-many:b"}, "ok none gui [] [a;b;] verbose |"},
    {"ValueParameterBeforeFlag", {"-both", "x"}, "ok none gui [x] [] |"},
    {"OtherCase", {"-Path", "fr", "-verbose"}, "failed error plain [] [] |Path;"},
    {"ValueMissingAtEnd", {"-verbose", "-path"}, "failed error plain [] [] verbose |path;"},
    {"ValueMissingBeforeSwitch", {"-path", "-silent"}, "failed error plain [] [] |path;"},
    {"ColonFormOfFlag", {"-verbose:1"}, "failed error plain [] [] |verbose;"},
    {"ColonFormOfUnknown", {"-what:1:2"}, "failed error plain [] [] |what;"},
    {"DashAlone", {"-"}, "failed error plain [] [] |;"},
    {"ThreeDashes", {"---path", "x"}, "failed error plain [] [] |-path;"},
    {"OptionOfQt", {"-style", "motif"}, "failed error plain [] [] |style;"},
    {"Silent", {"-silent"}, "ok silent gui [] [] |"},
    {"SilentTwice", {"-silent", "-silent"}, "failed error plain [] [] |silent;"},
    {"PlainThenSilent", {"x", "-silent"}, "failed error plain [] [] |silent;"},
    {"SilentThenPlain", {"-silent", "x"}, "failed silent gui [] [] |"},
    {"Plain", {"x"}, "ok default gui [] [] |"},
    {"EmptyIsPlain", {""}, "ok default gui [] [] |"},
    {"ErrorAfterAction", {"-silent", "-what"}, "failed error plain [] [] |what;"},
    {"RefusalDoesNotStop", {"-silent", "x", "-verbose"}, "failed silent gui [] [] verbose |"},
};
INSTANTIATE_TEST_SUITE_P(, CommandLine, testing::ValuesIn(LINES),
                         [](const auto& line) { return std::string(line.param.name); });

TEST(CommandLineParser, PlainArgumentWithoutDefaultEndsTheParse) {
    Grammar grammar;
    grammar.Parser().SetDefaultParameter(nullptr);
    EXPECT_EQ(grammar.Parse({"-path:a", "x", "-verbose"}), "failed none gui [a] [] |");
}

TEST(CommandLineParser, TakesWideArguments) {
    Grammar grammar;
    std::vector<std::wstring> texts = {L"program", L"-path", L"日本"};
    std::vector<wchar_t*> argv = {texts[0].data(), texts[1].data(), texts[2].data()};
    EXPECT_TRUE(grammar.Parser().Parse(3, argv.data()));
    EXPECT_EQ(grammar.Parsed(), "none gui [日本] [] |");
}

TEST(CommandLineParser, WorksWithoutAnyArgument) {
    EXPECT_TRUE(Grammar().Parser().Parse(0, static_cast<char**>(nullptr)));
}

// An error parameter that remembers the kinds of errors.
class Kinds : public ICmdLineParam {
public:
    bool SetValue(const CAtlString& name, const CAtlString& value) override {
        seen += name + "=" + value + ";";
        return true;
    }
    CAtlString GetError() const override { return {}; }
    CAtlString seen;
};

TEST(CommandLineParser, NamesTheKindOfTheError) {
    Grammar grammar;
    Kinds kinds;
    grammar.Parser().SetErrorParameter(&kinds);
    grammar.Parse({"-path"});
    grammar.Parse({"-what"});
    grammar.Parse({"-silent", "-silent"});
    EXPECT_EQ(kinds.seen, CAtlString("PARAM_NO_VALUE=path;UNKNOWN_PARAM=what;GENERIC_ERROR=silent;"));
}

}  // namespace
