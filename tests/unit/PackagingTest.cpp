// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the package brings beside the programs agrees with them: the manual page with the command line, the
// desktop's files with the languages. (That the files are valid, and work, is for scripts/package.sh
// --verify.)
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QRegularExpression>
#include <QStringList>
#include <boost/make_shared.hpp>
#include <set>
#include <sstream>

#include "app/CApplicationFactory.h"
#include "catalog/RunCatalogCheck.h"
#include "report/CReportOptions.h"
#include "support/FakeDownloader.h"
#include "support/FakeEnvironment.h"
#include "support/TemporaryTree.h"
#include "support/TextPrinting.h"

namespace {

using Texts = std::multiset<QString>;

QString Source(const char* file) {
    return QString::fromStdString(ReadWholeFile(std::string(VARDO_SOURCE_DIR "/") + file));
}

// The first captured text of every match, in which "_" stands for "-" and for the manual page's "\-".
Texts Matches(const QString& text, const QString& pattern) {
    Texts found;
    const QRegularExpression expression(pattern, QRegularExpression::MultilineOption);
    for (auto matches = expression.globalMatch(text); matches.hasNext();)
        found.insert(matches.next().captured(1).replace("\\-", "_").replace('-', '_'));
    return found;
}

bool IsAccepted(const QString& argument) {
    CApplicationFactory factory(boost::make_shared<FakeEnvironment>(), boost::make_shared<FakeDownloader>());
    std::string program = "program";
    std::string option = argument.toStdString();
    char* argv[] = {program.data(), option.data()};
    return factory.Parse(2, argv) && factory.IsGuiEnabled();
}

}  // namespace

TEST(Packaging, TheManualPageHasTheOptionsOfTheCommandLine) {
    const QString factory = Source("app/CApplicationFactory.cpp");
    const QString page = Source("packaging/man/VARDOProductUpdate.1.in");
    const QString options = page.section("\n.SH OPTIONS\n", 1).section("\n.SH ", 0, 0);
    const Texts flags = Matches(options, R"(^\.TP\n\.B \\-(\w+)$)");
    const Texts values = Matches(options, R"(^\.TP\n\.BI \\-(\w+)\\  [A-Z :]+$)");
    EXPECT_EQ(flags, Matches(factory, R"x(AddFlagParameter\("(\w+)")x"));
    EXPECT_EQ(values, Matches(factory, R"x(AddValueParameter\("(\w+)")x"));
    for (const QString& flag : flags)
        EXPECT_TRUE(IsAccepted("-" + flag)) << flag.toStdString();
    for (const QString& value : values)
        EXPECT_TRUE(IsAccepted("-" + value + ":x")) << value.toStdString();
    Texts all = flags;
    all.insert(values.begin(), values.end());
    EXPECT_EQ(Matches(page.section("\n.SH DESCRIPTION", 0, 0), R"(^\.RB \[ \\-(\w+))"), all) << "synopsis";
}

TEST(Packaging, TheManualPagesHaveTheOptionsOfTheHelpTexts) {
    std::ostringstream help;
    RunCatalogCheck({"program", "--help"}, help, help);
    const std::pair<const char*, QString> rows[] = {
        {"packaging/man/VARDOCatalogCheck.1.in", QString::fromStdString(help.str())},
        {"packaging/man/VARDOUpdateReport.1.in", CReportOptions().GetHelp()},
    };
    for (const auto& [file, text] : rows) {
        const Texts described = Matches(Source(file), R"(^\.TP\n\.BI?R? \\-\\-((?:\w|\\-)+))");
        const Texts helped = Matches(text, R"(^  (?:-\w, )?--([\w-]+))");
        EXPECT_GE(helped.size(), 4U) << text.toStdString();
        EXPECT_EQ(described, helped) << file;
    }
}

TEST(Packaging, TheDesktopSpeaksEveryLanguage) {
    const Texts languages = Matches(Source("i18n/translations/languages.xml"), R"x(Code="(?!en)(\w+)")x");
    ASSERT_EQ(languages.size(), 9U);
    const std::pair<const char*, const char*> rows[] = {
        {"packaging/desktop/vardo-product-update.desktop.in", R"(^GenericName\[(\w+)\]=.)"},
        {"packaging/desktop/vardo-product-update.desktop.in", R"(^Comment\[(\w+)\]=.)"},
        {"packaging/desktop/vardo-product-update.desktop.in", R"(^Keywords\[(\w+)\]=.*;$)"},
        {"packaging/desktop/autostart.desktop.in", R"(^Comment\[(\w+)\]=.)"},
        {"packaging/desktop/metainfo.xml.in", R"x(<summary xml:lang="([\w-]+)">.)x"},
        {"packaging/desktop/metainfo.xml.in", R"x(<p xml:lang="([\w-]+)">.)x"},
    };
    for (const auto& [file, pattern] : rows)
        EXPECT_EQ(Matches(Source(file), pattern), languages) << file << ": " << pattern;
}
