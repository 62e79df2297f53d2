// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The installed program behind a real proxy that asks for credentials: Squid, which lets only "user" with the
// password "word" through, and the user of a Kerberos realm.
#include "e2e/ProgramTest.h"
#include "support/KerberosRealm.h"

namespace {

// Squid's other work (further sockets, helpers, caches) is switched off.
const char* const CONFIGURATION = R"(
http_port 127.0.0.1:%1
auth_param negotiate program /usr/lib/squid/negotiate_kerberos_auth -k %3 -s HTTP/127.0.0.1 -t none
auth_param negotiate children 1 startup=1
auth_param digest program /usr/lib/squid/digest_file_auth %2/passwords
auth_param digest children 1 startup=1
auth_param digest realm test
acl known proxy_auth REQUIRED
http_access allow known
http_access deny all
logformat answers %>Hs %un
access_log stdio:%2/access.log answers
cache_log %2/cache.log
pid_filename none
netdb_filename none
cache deny all
pinger_enable off
udp_incoming_address 127.0.0.1
visible_hostname squid.test
)";

class ProxyTest : public ProgramTest {
public:
    // Squid would take a second to end politely, and it has nothing to save.
    ~ProxyTest() override { squid_->Signal(SIGKILL); }

protected:
    static constexpr const char* QUESTION = "Proxy Authentication Required";

    ProxyTest() {
        const int port = FreePort();
        // Squid gives up root's rights before it opens its files.
        std::filesystem::permissions(files_.Root(), std::filesystem::perms::all);
        files_.Write("passwords", "user:word\n");
        files_.Write("squid.conf", QString(CONFIGURATION)
                                       .arg(port)
                                       .arg(files_.Root().c_str(), realm_.Keytab().c_str())
                                       .toStdString());
        squid_ = std::make_unique<ChildProcess>(
            "/usr/sbin/squid", std::vector<std::string>{"-N", "-f", files_.Path("squid.conf")});
        EXPECT_TRUE(WaitUntil([this] {
            return ReadWholeFile(files_.Path("cache.log")).find("Accepting HTTP") != std::string::npos;
        })) << squid_->Errors();
        ProxySettings().setValue("HttpProxyHost", "127.0.0.1");
        ProxySettings().setValue("HttpProxyPort", port);
        // One product is enough: the program asks for its own description before it.
        machine_.KnowBoardSoftwareOnly();
    }

    void Answer(const std::string& password) {
        const Window question = desktop_.WaitFor(program_->Id(), QUESTION);
        desktop_.Type(question, "user");
        desktop_.Press(question, "Tab");
        desktop_.Type(question, password);
        desktop_.Press(question, "Return");
        EXPECT_TRUE(desktop_.WaitUntilGone(question));
    }
    void WaitForTheCheckAndClose() {
        window_ = desktop_.WaitFor(program_->Id(), TITLE);
        ASSERT_TRUE(WaitUntilChecked(1)) << program_->Output();
        EXPECT_TRUE(Close());
    }
    // Waits for the proxy's next answers and compares them: status and user, "-" for no user.
    void ExpectAnswers(const std::vector<std::string>& expected) {
        std::vector<std::string> answers;
        WaitUntil([&] {
            std::istringstream log(ReadWholeFile(files_.Path("access.log")).substr(logRead_));
            answers.clear();
            for (std::string line; std::getline(log, line);)
                answers.push_back(line);
            return answers.size() >= expected.size();
        });
        logRead_ = ReadWholeFile(files_.Path("access.log")).size();
        EXPECT_EQ(answers, expected);
    }

    TemporaryTree files_;
    KerberosRealm realm_;
    std::unique_ptr<ChildProcess> squid_;
    std::size_t logRead_ = 0;
};

TEST_F(ProxyTest, AsksAUserUntilTheCredentialsAreRightOrRefused) {
    std::optional<ScopedEnvironment> noTicket(std::in_place, "KRB5CCNAME", "/tmp/missing");
    Start({"-silent"});
    EXPECT_EQ(program_->ExitCode(), 0);
    ExpectAnswers({"407 -", "407 -"});

    Start({});
    desktop_.Press(desktop_.WaitFor(program_->Id(), QUESTION), "Escape");
    WaitForTheCheckAndClose();
    ExpectAnswers({"407 -", "407 -"});
    EXPECT_EQ(machine_.Requests(), "");

    Start({});
    Answer("wrong");
    Answer("word");
    WaitForTheCheckAndClose();
    ExpectAnswers({"407 -", "407 user", "200 user", "200 user"});
    EXPECT_THAT(machine_.Requests(), HasSubstr("GET /updates/board.xml 200"));
    EXPECT_EQ(Setting("LastChecked"), Today());

    Start({"-username", "user", "-password", "word"});
    WaitForTheCheckAndClose();
    ExpectAnswers({"407 -", "200 user", "200 user"});

    noTicket.reset();
    Start({});
    WaitForTheCheckAndClose();
    ExpectAnswers({"407 -", "200 someone@TEST", "200 someone@TEST"});
}

}  // namespace
