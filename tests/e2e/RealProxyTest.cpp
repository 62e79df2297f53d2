// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Fetching through the proxies that people really use: Squid with Basic and with Digest authentication, and
// Tinyproxy without any.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QLineEdit>
#include <QPushButton>
#include <boost/make_shared.hpp>
#include <filesystem>
#include <sstream>

#include "e2e/SquidProxy.h"
#include "net/Downloader.h"
#include "net/ProxyHandlerBase.h"
#include "support/ChildProcess.h"
#include "support/LoopbackServer.h"
#include "support/ModalDialogDriver.h"
#include "support/Ports.h"
#include "support/TemporaryTree.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ThroughAProxy : public testing::Test {
protected:
    ThroughAProxy() {
        origin_.Serve("/list.xml", LoopbackAnswer::Body("<list/>"));
        downloader_.SetProxyHandler(handler_);
    }

    // A port comes from the settings or from the options dialog.
    void PointHandlerTo(int port) {
        const ModalDialogDriver driver([port](QDialog& dialog) {
            dialog.findChild<QLineEdit*>("proxyHostEdit")->setText("127.0.0.1");
            dialog.findChild<QLineEdit*>("proxyPortEdit")->setText(QString::number(port));
            dialog.findChild<QPushButton*>("okButton")->click();
        });
        ASSERT_TRUE(handler_->ShowProxyOptionsDialog(nullptr));
    }

    // The contents fetched; "-" when the fetch failed.
    std::string Fetch() {
        const CAtlString path = downloader_.Download(CAtlString(origin_.Address("/list.xml")));
        if (path.IsEmpty())
            return "-";
        const std::string file = path.ToQString().toStdString();
        const std::string contents = ReadWholeFile(file);
        std::filesystem::remove(file);
        return contents;
    }

    // Answers the credentials dialog: "user" and a password with OK, or Cancel for an empty password.
    static void Answer(const QDialog& dialog, const QString& password) {
        dialog.findChild<QLineEdit*>("proxyUserNameEdit")->setText("user");
        dialog.findChild<QLineEdit*>("proxyPasswordEdit")->setText(password);
        dialog.findChild<QPushButton*>(password.isEmpty() ? "cancelButton" : "okButton")->click();
    }

    LoopbackServer origin_;
    Downloader downloader_;
    boost::shared_ptr<ProxyHandlerBase> handler_ = boost::make_shared<ProxyHandlerBase>();
};

// Both schemes of Squid, which differ in what an attempt costs: a Basic password is sent at once after the
// first challenge, while a Digest needs the challenge of its own attempt.
class ThroughSquid : public ThroughAProxy, public testing::WithParamInterface<SquidProxy::Scheme> {
protected:
    void SetUp() override { PointHandlerTo(squid_.Port()); }

    // The statuses that Squid answered with since the last call, once there are so many of them.
    std::vector<std::string> Statuses(std::size_t expected) {
        const std::vector<std::string> answers = squid_.Answers(seen_ + expected);
        std::vector<std::string> statuses;
        for (; seen_ < answers.size(); ++seen_)
            statuses.push_back(answers[seen_].substr(0, 3));
        return statuses;
    }

    SquidProxy squid_{GetParam()};

private:
    std::size_t seen_ = 0;
};

}  // namespace

TEST_P(ThroughSquid, KnownCredentialsNeedNoDialogAndTwoRequests) {
    handler_->SetCredentials(L"user", L"word");
    for (int fetch = 1; fetch <= 2; ++fetch) {
        EXPECT_EQ(Fetch(), "<list/>");
        EXPECT_THAT(Statuses(2), ElementsAre("407", "200"));
    }
    EXPECT_EQ(origin_.RequestCount(), 2U);
}

TEST_P(ThroughSquid, ADialogAsksForUnknownCredentialsOnce) {
    handler_->SetInteractive(true);
    const ModalDialogDriver driver([](QDialog& dialog) { Answer(dialog, "word"); });
    EXPECT_EQ(Fetch(), "<list/>");
    if (GetParam() == SquidProxy::Scheme::BASIC)
        EXPECT_THAT(Statuses(2), ElementsAre("407", "200"));
    else
        EXPECT_THAT(Statuses(3), ElementsAre("407", "407", "200"));
    EXPECT_EQ(Fetch(), "<list/>");
    EXPECT_EQ(driver.Count(), 1);
    EXPECT_EQ(origin_.RequestCount(), 2U);
}

TEST_P(ThroughSquid, WrongCredentialsAreAskedForUntilTheyAreRight) {
    handler_->SetCredentials(L"user", L"wrong");
    handler_->SetInteractive(true);
    QStringList passwords = {"wrong again", "word"};
    const ModalDialogDriver driver([&](QDialog& dialog) { Answer(dialog, passwords.takeFirst()); });
    EXPECT_EQ(Fetch(), "<list/>");
    EXPECT_EQ(driver.Count(), 2);
    EXPECT_EQ(origin_.RequestCount(), 1U);
}

TEST_P(ThroughSquid, CancelEndsTheFetchAndAllAsking) {
    handler_->SetInteractive(true);
    const ModalDialogDriver driver([](QDialog& dialog) { Answer(dialog, QString()); });
    EXPECT_EQ(Fetch(), "-");
    EXPECT_EQ(Fetch(), "-");
    EXPECT_EQ(driver.Count(), 1);
    EXPECT_THAT(Statuses(2), ElementsAre("407", "407"));
    EXPECT_THAT(origin_.Requests(), IsEmpty());
}

TEST_P(ThroughSquid, NobodyIsAskedInASilentCheck) {
    const ModalDialogDriver driver([](QDialog&) {});
    EXPECT_EQ(Fetch(), "-");
    EXPECT_EQ(driver.Count(), 0);
    EXPECT_THAT(origin_.Requests(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(, ThroughSquid,
                         testing::Values(SquidProxy::Scheme::BASIC, SquidProxy::Scheme::DIGEST),
                         [](const auto& row) {
                             return row.param == SquidProxy::Scheme::BASIC ? "basic" : "digest";
                         });

TEST_F(ThroughAProxy, ThatAsksForNothing) {
    const int port = UnusedPort();
    const TemporaryTree files;
    std::ostringstream text;
    text << "Port " << port << "\nListen 127.0.0.1\nAllow 127.0.0.1\nTimeout 60\n";
    ChildProcess proxy("tinyproxy", {"-d", "-c", files.Write("tinyproxy.conf", text.str())});
    ASSERT_TRUE(WaitUntil([&] { return !proxy.IsRunning() || IsListening(port); }));
    PointHandlerTo(port);
    EXPECT_EQ(Fetch(), "<list/>");
    ASSERT_EQ(origin_.RequestCount(), 1U);
    EXPECT_THAT(origin_.Requests().front().headers.at("via"), testing::HasSubstr("tinyproxy"));
}
