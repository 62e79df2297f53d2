// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The program's command line, up to the point where an action runs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <boost/make_shared.hpp>

#include "DataTable.h"
#include "app/CApplicationFactory.h"
#include "i18n/Language.h"
#include "net/ProxyAddress.h"
#include "support/FakeDownloader.h"
#include "support/FakeEnvironment.h"
#include "support/TextPrinting.h"

TEST(CommandLine, IsReadAsTheTableSays) {
    for (const QStringList& row : DataTable("command-lines.txt")) {
        SetLocaleOverride("fr");
        CApplicationFactory factory(boost::make_shared<FakeEnvironment>(),
                                    boost::make_shared<FakeDownloader>());
        QByteArrayList arguments{"no such program"};
        for (const QString& argument : row[0].split(' ', Qt::SkipEmptyParts))
            arguments << (argument == R"("")" ? "" : argument.toUtf8());
        std::vector<char*> argv;
        for (QByteArray& argument : arguments)
            argv.push_back(argument.data());
        EXPECT_EQ(factory.Parse(static_cast<int>(argv.size()), argv.data()), row[1] == "accepted")
            << row[0].toStdString();
        // The action that reports errors has no window.
        EXPECT_EQ(factory.IsGuiEnabled(), row[2] == "window") << row[0].toStdString();
        EXPECT_EQ(factory.GetLocale(), CAtlString(row[3])) << row[0].toStdString();
    }
    SetLocaleOverride("");
}

TEST(ProxyAddresses, AreReadAsTheyAreWritten) {
    const auto read = [](const QString& text) {
        const auto address = ParseProxyAddress(text);
        const QString port = address && address->port ? QString::number(*address->port) : "-";
        return address ? address->host.ToQString() + ' ' + port : "";
    };
    for (const QStringList& row : DataTable("proxy-addresses.txt")) {
        EXPECT_EQ(read(row[0]), row[1]) << row[0].toStdString();
        const int port = row[1].section(' ', 1).toInt();
        EXPECT_TRUE(port == 0 || read(ProxyAddressText(row[1].section(' ', 0, 0), port)) == row[1]);
    }
    EXPECT_EQ(read(" proxy:1\t"), "proxy 1");
    EXPECT_EQ(read("proxy:1\n2"), "");
}

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
