// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The installed program behind a real proxy that asks for credentials: Squid, which lets only "user" with the
// password "word" through.
#include <QTcpServer>

#include "e2e/ProgramTest.h"

namespace {

// The scheme's helper and its file: the password as crypt(3) keeps it, or for Digest, which must know it.
struct Scheme {
    const char* name;
    const char* helper;
    const char* passwords;
    // What the proxy answers when the password is known, and when the first one that is typed is wrong. A
    // Basic password is sent at once after the first challenge, while a Digest needs the challenge of its own
    // attempt. The product's file, the last one, needs no challenge any more.
    std::vector<std::string> answersToKnown;
    std::vector<std::string> answersToDialogs;
    friend void PrintTo(const Scheme& scheme, std::ostream* out) { *out << scheme.name; }
};

const Scheme SCHEMES[] = {
    {"basic",
     "basic_ncsa_auth",
     "user:$1$Vardo$U9LJ9Md7JSDNUwR5wBXBC0\n",
     {"407 -", "200 user", "200 user"},
     {"407 -", "407 user", "200 user", "200 user"}},
    {"digest",
     "digest_file_auth",
     "user:word\n",
     {"407 -", "407 -", "200 user", "200 user"},
     {"407 -", "407 -", "407 user", "407 -", "200 user", "200 user"}},
};

// All that squid would do besides (other sockets, helpers, caches) is switched off.
const char* const CONFIGURATION = R"(
http_port 127.0.0.1:%1
auth_param %2 program /usr/lib/squid/%3 %4/passwords
auth_param %2 children 1 startup=1
auth_param %2 realm test
acl known proxy_auth REQUIRED
http_access allow known
http_access deny all
logformat answers %>Hs %un
access_log stdio:%4/access.log answers
cache_log %4/cache.log
pid_filename none
netdb_filename none
cache deny all
pinger_enable off
udp_incoming_address 127.0.0.1
visible_hostname squid.test
)";

class ProxyTest : public ProgramTest, public testing::WithParamInterface<Scheme> {
public:
    // Asked to end, squid takes a second for it, and it keeps nothing that is worth one.
    ~ProxyTest() override { squid_->Signal(SIGKILL); }

protected:
    static constexpr const char* QUESTION = "Proxy Authentication Required";

    ProxyTest() {
        QTcpServer unused;
        unused.listen(QHostAddress::LocalHost);
        const int port = unused.serverPort();
        unused.close();
        // Squid leaves root's rights behind before it opens its files.
        std::filesystem::permissions(files_.Root(), std::filesystem::perms::all);
        files_.Write("passwords", GetParam().passwords);
        const QString configuration =
            QString(CONFIGURATION).arg(port).arg(GetParam().name, GetParam().helper, files_.Root().c_str());
        files_.Write("squid.conf", configuration.toStdString());
        squid_ = std::make_unique<ChildProcess>(
            "/usr/sbin/squid", std::vector<std::string>{"-N", "-f", files_.Path("squid.conf")});
        EXPECT_TRUE(WaitUntil([this] {
            return ReadWholeFile(files_.Path("cache.log")).find("Accepting HTTP") != std::string::npos;
        })) << squid_->Errors();
        ProxySettings().setValue("HttpProxyHost", "127.0.0.1");
        ProxySettings().setValue("HttpProxyPort", port);
        // The products are checked one by one: few are enough to see what happens to the later ones.
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
    // The proxy's answers since the last call, once there are so many: the status and the user, "-" for none.
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
    std::unique_ptr<ChildProcess> squid_;
    std::size_t logRead_ = 0;
};

TEST_P(ProxyTest, AsksAUserUntilTheCredentialsAreRightOrRefused) {
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
    ExpectAnswers(GetParam().answersToDialogs);
    EXPECT_THAT(machine_.Requests(), HasSubstr("GET /updates/board.xml 200"));
    EXPECT_EQ(Setting("LastChecked"), Today());

    Start({"-username", "user", "-password", "word"});
    WaitForTheCheckAndClose();
    ExpectAnswers(GetParam().answersToKnown);
}

INSTANTIATE_TEST_SUITE_P(, ProxyTest, testing::ValuesIn(SCHEMES),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
