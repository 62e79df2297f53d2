// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The comparison of a folder with the files that a server sends.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <filesystem>
#include <sstream>

#include "platform/files/CVardoDirectoryPath.h"
#include "publish/FolderProgram.h"
#include "support/LoopbackServer.h"
#include "support/TemporaryTree.h"

TEST(LiveCheck, TellsWhatProgramsWouldTripOver) {
    const std::string list =
        "<P Version='1.0.0.0' Url='http://h/products.xml'><Product Name='n' BaseXml='B'/></P>";
    const std::string offer =
        "<S Location='Server'><Product UpdateVersion='2.0.0.0' UpdateInstallFile='run' "
        "UpdateInstallURL='http://h/p'><Compatibility><Range VersionTo='0.9.0.0'><Product "
        "UpdateVersion='0.9.0.1' UpdateWebPage='http://h/p/large' UpdateInstallFile='large' "
        "UpdateInstallURL='http://h/p'/></Range></Compatibility></Product></S>";
    std::string large(std::size_t{17} << 20, 'x');
    const TemporaryTree tree;
    tree.Write("site/products.xml", list);
    tree.Write("site/p/own.xml", offer);
    tree.Write("site/p/run", "#!/bin/sh\n");
    tree.Write("site/p/run.minisig", "s");
    tree.Write("share/VardoProductUpdate.xml",
               "<S><Product CurrentVersion='1.0.0.0' RemoteVersionFile='own.xml' "
               "RemoteVersionFileURL='http://h/p'/></S>");
    // The last text is the end of the finding; it is empty when there is no finding.
    const LoopbackAnswer moved{.status = 301, .body = "x", .headers = {"Location: https://h/products.xml"}};
    const std::tuple<std::string, LoopbackAnswer, const char*> cases[] = {
        {"/products.xml", LoopbackAnswer::Body(list), ""},
        {"/products.xml", moved, "(301) [not-served]"},
        {"/products.xml", LoopbackAnswer::Body(list + "\n"), "differs from this file [served-otherwise]"},
        {"/p/own.xml", {.body = offer, .announcedLength = 9999}, " [not-served]"},
        {"/p/run.minisig", LoopbackAnswer::Status(404), "(404) [not-served]"},
    };
    for (const auto& [target, answer, end] : cases) {
        SCOPED_TRACE(end);
        LoopbackServer server;
        server.Serve("/live/products.xml", LoopbackAnswer::Body(list));
        server.Serve("/live/p/own.xml", LoopbackAnswer::Body(offer));
        server.Serve("/live/p/run", LoopbackAnswer::Body("#!/bin/sh\n"));
        server.Serve("/live/p/run.minisig", LoopbackAnswer::Body("s"));
        tree.Write("site/p/large", large);
        server.Serve("/live/p/large", LoopbackAnswer::Body(large));
        server.Serve("/live" + target, answer);
        const std::string beginning = *end ? "site" + target + ":1: error: " : "";
        std::ostringstream out;
        EXPECT_EQ(RunCatalogCheck(
                      {"", "--live", server.Address("/live"), QString::fromStdString(tree.Root())}, out, out),
                  *end ? EXIT_ERRORS : EXIT_CLEAN);
        const QString said = QString::fromStdString(out.str());
        EXPECT_THAT(out.str(), testing::AllOf(testing::HasSubstr(beginning), testing::HasSubstr(end)));
        EXPECT_EQ(said.count('\n'), *end ? 2 : 1) << out.str();
        EXPECT_EQ(server.RequestCount(), 5U) << "each file once";
        // The first case has shown that an installer may be large.
        large = "x";
    }
    EXPECT_TRUE(std::filesystem::is_empty(
        CVardoDirectoryPath::GetTempDirectory().GetDirectoryPathString().ToQString().toStdString()));
    std::ostringstream out;
    EXPECT_EQ(
        RunCatalogCheck({"", "--live", "http://h/", QString::fromStdString(tree.Path("share"))}, out, out),
        EXIT_ERRORS)
        << "nothing to fetch";
}
