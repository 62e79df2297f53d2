// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Fetching through the proxies that people really use: Squid with Basic and with Digest authentication, and
// Tinyproxy without any.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QLineEdit>
#include <QPushButton>
#include <boost/make_shared.hpp>
#include <csignal>
#include <filesystem>
#include <memory>
#include <sstream>

#include <sys/stat.h>

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

// "word", as crypt(3) with SHA-512 keeps it.
const char* const HASHED_WORD =
    "$6$VardoTestSalt$qfABxoTcbX60a8y2NMx3XBTEkQAc4FRo0qzDtqZXrwsffuY.NtaKzavBa/lhq5fDKY64ohhDER66MusLXQgLM.";

class ThroughAProxy : public testing::Test {
protected:
    ThroughAProxy() {
        // Squid leaves root's rights behind before it opens its files.
        chmod(files_.Root().c_str(), 0777);
        origin_.Serve("/list.xml", LoopbackAnswer::Body("<list/>"));
        downloader_.SetProxyHandler(handler_);
    }

    // A proxy that is asked to end takes a second for it, and keeps nothing that is worth one.
    ~ThroughAProxy() override {
        if (proxy_)
            proxy_->Signal(SIGKILL);
    }

    void UseProxy(const std::string& program, const std::vector<std::string>& arguments, int port) {
        proxy_ = std::make_unique<ChildProcess>(program, arguments);
        ASSERT_TRUE(WaitUntil([&] { return !proxy_->IsRunning() || IsListening(port); }));
        ASSERT_TRUE(proxy_->IsRunning()) << proxy_->Errors() << proxy_->Output();
        PointHandlerTo(port);
    }

    void StartSquid(const std::string& scheme) {
        const int port = UnusedPort();
        const std::string digest = "user:word\n";
        const std::string passwords =
            files_.Write("passwords", scheme == "basic" ? std::string("user:") + HASHED_WORD + "\n" : digest);
        const std::string helper = scheme == "basic" ? "basic_ncsa_auth " : "digest_file_auth ";
        std::ostringstream text;
        text << "http_port 127.0.0.1:" << port << "\npid_filename none\nnetdb_filename none\n"
             << "cache deny all\ncache_mem 0\nshutdown_lifetime 0 seconds\n"
             << "cache_log " << files_.Path("cache.log") << "\ncoredump_dir " << files_.Root()
             << "\nlogformat statuses %>Hs\naccess_log stdio:" << files_.Path("access.log") << " statuses\n"
             << "auth_param " << scheme << " program /usr/lib/squid/" << helper << passwords
             << "\nauth_param " << scheme << " children 1 startup=1\nauth_param " << scheme << " realm test\n"
             << "acl known proxy_auth REQUIRED\nhttp_access allow known\nhttp_access deny all\n";
        UseProxy("squid", {"-N", "-f", files_.Write("squid.conf", text.str())}, port);
    }

    void StartTinyproxy() {
        const int port = UnusedPort();
        std::ostringstream text;
        text << "Port " << port << "\nListen 127.0.0.1\nAllow 127.0.0.1\nTimeout 60\n";
        UseProxy("tinyproxy", {"-d", "-c", files_.Write("tinyproxy.conf", text.str())}, port);
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

    // The statuses that Squid answered with since the last call, once there are so many of them. It logs 0
    // for a connection without a request, such as the one that finds out whether it listens.
    std::vector<std::string> Statuses(std::size_t expected) {
        std::vector<std::string> statuses;
        WaitUntil(
            [&] {
                statuses.clear();
                std::istringstream lines(ReadWholeFile(files_.Path("access.log")));
                for (std::string line; std::getline(lines, line);)
                    if (!line.starts_with("0"))
                        statuses.push_back(line);
                return statuses.size() >= seen_ + expected;
            },
            std::chrono::seconds(5));
        statuses.erase(statuses.begin(), statuses.begin() + static_cast<std::ptrdiff_t>(seen_));
        seen_ += statuses.size();
        return statuses;
    }

    // Answers the credentials dialog: "user" and a password with OK, or Cancel for an empty password.
    static void Answer(const QDialog& dialog, const QString& password) {
        dialog.findChild<QLineEdit*>("proxyUserNameEdit")->setText("user");
        dialog.findChild<QLineEdit*>("proxyPasswordEdit")->setText(password);
        dialog.findChild<QPushButton*>(password.isEmpty() ? "cancelButton" : "okButton")->click();
    }

    TemporaryTree files_;
    LoopbackServer origin_;
    Downloader downloader_;
    boost::shared_ptr<ProxyHandlerBase> handler_ = boost::make_shared<ProxyHandlerBase>();

private:
    // A port comes from the settings or from the options dialog.
    void PointHandlerTo(int port) {
        const ModalDialogDriver driver([port](QDialog& dialog) {
            dialog.findChild<QLineEdit*>("proxyHostEdit")->setText("127.0.0.1");
            dialog.findChild<QLineEdit*>("proxyPortEdit")->setText(QString::number(port));
            dialog.findChild<QPushButton*>("okButton")->click();
        });
        ASSERT_TRUE(handler_->ShowProxyOptionsDialog(nullptr));
    }

    std::unique_ptr<ChildProcess> proxy_;
    std::size_t seen_ = 0;
};

// Both schemes of Squid, which differ in what an attempt costs: a Basic password is sent at once after the
// first challenge, while a Digest needs the challenge of its own attempt.
class ThroughSquid : public ThroughAProxy, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override { StartSquid(GetParam()); }
    bool IsBasic() const { return std::string(GetParam()) == "basic"; }
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
    if (IsBasic())
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

INSTANTIATE_TEST_SUITE_P(, ThroughSquid, testing::Values("basic", "digest"),
                         [](const auto& row) { return std::string(row.param); });

TEST_F(ThroughAProxy, ThatAsksForNothing) {
    StartTinyproxy();
    EXPECT_EQ(Fetch(), "<list/>");
    ASSERT_EQ(origin_.RequestCount(), 1U);
    EXPECT_THAT(origin_.Requests().front().headers.at("via"), testing::HasSubstr("tinyproxy"));
}
