// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// One transfer: its request, what counts as success, and which file it leaves; and how a connection finds the
// address that answers, of a host with several.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QTcpServer>
#include <QThread>
#include <algorithm>
#include <boost/make_shared.hpp>

#include <sys/resource.h>

#include "net/ConnectionInfo.h"
#include "net/HostConnection.h"
#include "net/QHttp.h"
#include "net/QtDownloader.h"
#include "net/Transfer.h"
#include "net/events/WaitWithQtEvents.h"
#include "platform/text/ResultCodes.h"
#include "support/KerberosRealm.h"
#include "support/LoopbackServer.h"
#include "support/ScopedEnvironment.h"
#include "support/TextPrinting.h"
#include "unit/DataTable.h"

using namespace std::chrono_literals;

namespace {

const char* const NO_FILE = "(no file)";

class Transfer : public testing::Test {
protected:
    Transfer() { QFile::remove(target_.ToQString()); }

    int Fetch(const QString& address, const TransferBounds& bounds = {.silence = 10s}) {
        QtDownloader downloader(bounds, threads_);
        const int result = downloader.DownloadOnThread(CAtlString(address), target_, &info_);
        record_ = downloader.GetRecord();
        return result;
    }

    std::string Contents() const {
        QFile file(target_.ToQString());
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : NO_FILE;
    }

    // Answers every question for credentials with these, and counts the questions.
    void AnswerWith(const char* userName, const char* password) {
        info_.SetProxyAuthRequiredCallback([this, userName, password](const CAtlString&, int,
                                                                      CAtlString& user, CAtlString& word) {
            EXPECT_TRUE(++questions_ == 1 || user == CAtlString(userName)) << "the refused ones come along";
            user = userName;
            word = password;
            return true;
        });
    }
    // Forgets the connections and what they taught about servers.
    void BeginAnew() { threads_ = boost::make_shared<CTransferThreads>(1); }

    // A transfer ignores this proxy, which refuses every connection.
    const ScopedEnvironment environment_{"http_proxy", "http://127.0.0.1:1/"};
    const ScopedEnvironment noTicket_{"KRB5CCNAME", "/tmp/missing"};
    LoopbackServer server_;
    boost::shared_ptr<CTransferThreads> threads_ = boost::make_shared<CTransferThreads>(1);
    ConnectionInfo info_;
    CAtlString target_{L"/tmp/transfer.dat"};
    TransferRecord record_;
    int questions_ = 0;
};

const std::string HEAD = "HTTP/1.1 200 OK\r\n";
// The server's message in the example of [MS-NLMP], 4.2.4.
const char* const NTLM =
    "NTLM TlRMTVNTUAACAAAADAAMADgAAAAzgoriASNFZ4mrze8AAAAAAAAAACQAJABEAAAABgBwFwAAAA9TAGUAcgB2AGUAcgACAAwA"
    "RABvAG0AYQBpAG4AAQAMAFMAZQByAHYAZQByAAAAAAA=";
const std::string LARGE(3'000'000, 'x');
const std::string LINES = QByteArray("X: y\r\n").repeated(100'000).toStdString();
// Sent byte by byte, it takes longer than HURRIED allows; after HEAD, it is more header lines and a body.
const std::string DRIPS = LINES.substr(0, 600) + "\r\nx";

const TransferBounds PATIENT{.silence = 10s};
const TransferBounds IMPATIENT{.silence = 100ms, .wholeTime = 10s};
const TransferBounds HURRIED{.silence = 10s, .wholeTime = 300ms};
const TransferBounds NARROW{.bodyBytes = 1000};

struct Answered {
    const char* situation;
    LoopbackAnswer answer;
    // The contents of the file; empty for a failure.
    std::string file{};
    TransferBounds bounds = PATIENT;
    friend void PrintTo(const Answered& row, std::ostream* out) { *out << row.situation; }
};

LoopbackAnswer Chunked(const std::string& coding, const std::string& chunks) {
    return LoopbackAnswer::Raw(HEAD + "Transfer-Encoding: " + coding + "\r\n\r\n" + chunks);
}

const LoopbackAnswer CHUNKS = Chunked("chunked", "4;x=1\r\nbody\r\n0\r\nX: y\r\n\r\n");

const Answered SERVERS[] = {
    {"Announced", LoopbackAnswer::Raw("HTTP/1.1 103 Soon\r\nX: y\r\n\r\n" + HEAD + "\r\nx"), "x"},
    {"InstallerInChunks", CHUNKS, "body", NARROW.ForInstaller()},
    {"LargeInstaller", {.body = LARGE}, LARGE, NARROW.ForInstaller()},
    {"DrippingInstaller", {.body = DRIPS, .pause = 1ms}, DRIPS, HURRIED.ForInstaller()},
    {"AsLargeAsMayBe", {.body = LINES.substr(0, 1000)}, LINES.substr(0, 1000), NARROW},
    {"Empty", {}},
    {"Moved", {.status = 302, .body = "x", .headers = {"Location: /elsewhere"}}},
    {"ErrorWithoutEnd", {.status = 404, .body = "x", .announcedLength = 1001, .holdOpen = true}, "", NARROW},
    {"CutOff", {.body = LARGE, .announcedLength = 6'000'000}},
    {"CutOffChunk", Chunked("chunked", "9\r\nbody")},
    {"StrangeCoding", Chunked("gzip, chunked", "1\r\nx\r\n0\r\n\r\n")},
    {"AnotherProtocol", LoopbackAnswer::Raw("HTTP/1.1 101 Switching Protocols\r\n\r\nbody")},
    {"NotHttp", {.body = "220 mail.example ready\r\n", .isRaw = true, .holdOpen = true}},
    {"Nothing", LoopbackAnswer::Raw("")},
    {"StalledInstaller", {.body = "x", .announcedLength = 8, .holdOpen = true}, "", IMPATIENT.ForInstaller()},
    {"Dripping", {.body = DRIPS, .pause = 1ms}, "", HURRIED},
    {"DrippingHead", {.body = HEAD + DRIPS, .pause = 1ms, .isRaw = true}, "", HURRIED.ForInstaller()},
    {"HeadWithoutEnd", {.body = HEAD + LINES, .isRaw = true, .holdOpen = true}},
    {"TooLarge", {.body = "x", .announcedLength = 1001, .holdOpen = true}, "", NARROW},
    {"TooLargeWithoutLength", LoopbackAnswer::Raw("HTTP/1.0 200 OK\r\n\r\n" + LARGE), "", NARROW},
};

class Servers : public Transfer, public testing::WithParamInterface<Answered> {};

// Tries each row directly and through a proxy, over a new connection and over a kept one.
TEST_P(Servers, CountAsTheyAnswer) {
    const Answered& row = GetParam();
    const int result = row.file.empty() ? RESULT_FAILED : RESULT_OK;
    for (const bool isKept : {false, true})
        for (const bool isThroughProxy : {false, true}) {
            SCOPED_TRACE(std::string(isKept ? "kept" : "new") + (isThroughProxy ? ", proxy" : ", direct"));
            BeginAnew();
            info_.SetProxy(isThroughProxy ? L"127.0.0.1" : L"", server_.Port());
            const QString site = isThroughProxy ? "http://updates.invalid" : server_.Address("");
            const std::string address = isThroughProxy ? "http://updates.invalid/file.xml" : "/file.xml";
            server_.Serve((isThroughProxy ? site.toStdString() : "") + "/before.xml",
                          LoopbackAnswer::Body("x"));
            server_.Serve(address, row.answer);
            if (isKept) {
                EXPECT_EQ(Fetch(site + "/before.xml"), RESULT_OK);
            }
            QFile(target_.ToQString()).open(QIODevice::WriteOnly);
            const std::size_t before = server_.RequestCount();
            const int connections = server_.Connections();
            QElapsedTimer timer;
            timer.start();
            EXPECT_EQ(Fetch(site + "/file.xml", row.bounds), result);
            EXPECT_LT(timer.elapsed(), 5000);
            // A failure leaves at most an empty file, and no file unless the status is 200.
            const bool isNone = Contents() == NO_FILE;
            EXPECT_EQ(isNone ? "" : Contents(), row.file);
            EXPECT_TRUE(isNone || row.answer.status == 200);
            EXPECT_TRUE(record_.error.IsEmpty() || row.answer.status == 200) << "the status tells it";
            // The server closes the kept connection without an answer, so the request is sent again.
            const bool isSentTwice =
                isKept && row.answer.body.empty() && row.answer.isRaw && !row.answer.holdOpen;
            EXPECT_EQ(server_.RequestCount(), before + (isSentTwice ? 2 : 1));
            EXPECT_EQ(server_.Connections(), connections + (isKept && !isSentTwice ? 0 : 1));
        }
}

const auto SITUATION = [](const auto& row) { return row.param.situation; };
INSTANTIATE_TEST_SUITE_P(, Servers, testing::ValuesIn(SERVERS), SITUATION);

TEST_F(Transfer, AsksForThePathAloneWithAPlainRequest) {
    server_.Serve(LoopbackServer::ANY, LoopbackAnswer::Body("x"));
    for (const QStringList& row : DataTable("request-targets.txt")) {
        ASSERT_EQ(Fetch(server_.Address(row[0].toStdString())), RESULT_OK) << row[0].toStdString();
        EXPECT_EQ(server_.Requests().back().target, row[1].toStdString());
    }
    const LoopbackRequest request = server_.Requests().front();
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.headers.at("host"), "127.0.0.1:" + std::to_string(server_.Port()));
    EXPECT_EQ(request.headers.at("accept-encoding"), "identity");
    EXPECT_EQ(request.headers.at("user-agent"), "Mozilla/5.0");
    EXPECT_EQ(request.headers.size(), 3U);
}

TEST_F(Transfer, TakesNothingOverFromTheOneBefore) {
    LoopbackServer other;
    server_.Serve("/", LoopbackAnswer::Body("x"));
    other.Serve("/", {LoopbackAnswer::Body("other"), LoopbackAnswer::Raw("x")});
    EXPECT_EQ(Fetch(server_.Address("/")), RESULT_OK);
    QFile::remove(target_.ToQString());
    ASSERT_TRUE(QFile::link("/tmp/before", target_.ToQString()));
    EXPECT_EQ(Fetch(other.Address("/")), RESULT_OK);
    EXPECT_EQ(Contents(), "other") << "of another host";
    EXPECT_FALSE(QFile::exists("/tmp/before")) << "no link is followed";
    EXPECT_EQ(Fetch(other.Address("/")), RESULT_FAILED);
    EXPECT_TRUE(record_.isGarbled);
    EXPECT_EQ(Fetch("http://127.0.0.1:1/"), RESULT_FAILED);
    EXPECT_FALSE(record_.isGarbled);
}

TEST_F(Transfer, RefusesOtherSchemesWithoutTraffic) {
    QFile(target_.ToQString()).open(QIODevice::WriteOnly);
    for (const char* scheme : {"https", "ftp", "file", "httpx", ""}) {
        QString address = server_.Address("/");
        EXPECT_EQ(Fetch(address.replace(0, 4, scheme)), RESULT_FAILED) << scheme;
    }
    EXPECT_EQ(Fetch(""), RESULT_FAILED);
    EXPECT_EQ(server_.Connections(), 0);
    EXPECT_EQ(Contents(), "") << "the file was touched";
    for (const char* address : {"http:///a.xml", "http://127.0.0.1:99999/a.xml"})
        EXPECT_EQ(Fetch(address), RESULT_FAILED) << "nobody to ask";
    EXPECT_TRUE(record_.error.IsEmpty()) << "not even port 80";
}

TEST_F(Transfer, TellsTheAskingThread) {
    QStringList errors;
    std::vector<int> done;
    int total = 0;
    info_.SetConnectionFailedCallback([&](const CAtlString& error) {
        EXPECT_EQ(QThread::currentThread(), qApp->thread());
        errors << error.ToQString();
    });
    info_.SetProgressCallback([&](int now, int all) {
        EXPECT_EQ(QThread::currentThread(), qApp->thread());
        done.push_back(now);
        total = all;
    });
    EXPECT_EQ(Fetch("http://127.0.0.1:1/"), RESULT_FAILED);
    EXPECT_EQ(errors, QStringList("Connection refused"));
    EXPECT_EQ(Contents(), "");

    server_.Serve("/", {.body = std::string(300, '.'), .pause = 1ms});
    EXPECT_EQ(Fetch(server_.Address("/")), RESULT_OK);
    EXPECT_GT(done.size(), 1U) << "on the way";
    EXPECT_LT(done.size(), 100U) << "but not of every byte";
    EXPECT_EQ(done.back(), 300);
    EXPECT_EQ(total, 300);
}

TEST_F(Transfer, BlamesThisComputerWhenTheFileCannotBeWritten) {
    rlimit previous{};
    getrlimit(RLIMIT_FSIZE, &previous);
    for (const std::string& body : {LARGE, std::string("small")}) {
        server_.Serve("/", LoopbackAnswer::Body(body));
        const rlimit full{body.size() / 2, previous.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
        EXPECT_EQ(Fetch(server_.Address("/")), RESULT_FAILED);
        setrlimit(RLIMIT_FSIZE, &previous);
        EXPECT_EQ(Contents(), NO_FILE);
        EXPECT_EQ(FailureText(record_), "The file cannot be stored: File too large");
    }
    target_ = L"/tmp/missing/transfer.dat";
    EXPECT_EQ(Fetch(server_.Address("/")), RESULT_FAILED);
    EXPECT_EQ(FailureText(record_), "The file cannot be stored: No such file or directory");
}

TEST_F(Transfer, TakesAQuestionWithoutAProxyForAFailure) {
    server_.Serve("/", LoopbackAnswer::Challenge("Basic realm=\"x\""));
    AnswerWith("user", "word");
    EXPECT_EQ(Fetch(server_.Address("/")), RESULT_FAILED);
    EXPECT_EQ(questions_, 0);
    EXPECT_EQ(FailureText(record_), "127.0.0.1: The server asks for a proxy's password (407)");
}

class ProxyTransfer : public Transfer {
protected:
    ProxyTransfer() { info_.SetProxy(L"127.0.0.1", server_.Port()); }

    int FetchThroughProxy() { return Fetch(ADDRESS); }
    // The answers in these words: "body", "closing" (and its connection ends), "half" (of a body), "garbled",
    // "gone" (a 404), "lost", or the challenges of a 407; "NTLM ..." stands for the example's.
    static std::vector<LoopbackAnswer> AnswersOf(const QString& words) {
        const std::map<QString, LoopbackAnswer> others = {
            {"body", LoopbackAnswer::Body("through the proxy")},
            {"closing", LoopbackAnswer::Raw("HTTP/1.0 200 OK\r\n\r\nx")},
            {"half", {.body = "half", .announcedLength = 8}},
            {"garbled", LoopbackAnswer::Raw("x")},
            {"gone", LoopbackAnswer::Status(404)},
            {"lost", LoopbackAnswer::Raw("")}};
        std::vector<LoopbackAnswer> answers;
        for (const QString& each : QString(words).replace("NTLM ...", NTLM).split(" / ")) {
            const auto other = others.find(each);
            const QRegularExpression schemes("^(basic|digest|ntlm|negotiate)",
                                             QRegularExpression::CaseInsensitiveOption);
            EXPECT_TRUE(other != others.end() || each.contains(schemes)) << each.toStdString();
            LoopbackAnswer challenges = LoopbackAnswer::Status(407);
            for (const QString& challenge : each.split(" + "))
                challenges.headers.push_back("Proxy-Authenticate: " + challenge.toStdString());
            answers.push_back(other == others.end() ? challenges : other->second);
        }
        return answers;
    }
    void Serve(const QString& answers) { Serve(AnswersOf(answers)); }
    void Serve(std::vector<LoopbackAnswer> answers) { server_.Serve(ADDRESS, std::move(answers)); }

    // The credentials of each request, without those of the first requests.
    std::vector<std::string> SentCredentials(std::size_t without) const {
        std::vector<std::string> sent;
        for (const LoopbackRequest& request : server_.Requests()) {
            const auto found = request.headers.find("proxy-authorization");
            sent.push_back(found == request.headers.end() ? "" : found->second);
        }
        return {sent.begin() + static_cast<std::ptrdiff_t>(without), sent.end()};
    }

    static constexpr const char* WORD = "p\xc3\xa4ss:word";
    // No resolver knows this host.
    static constexpr const char* ADDRESS = "http://updates.invalid/list.xml";
    const LoopbackAnswer basic_ = LoopbackAnswer::Challenge("Basic realm=\"Digest nonce=1, x\"");
    const LoopbackAnswer digest_ = LoopbackAnswer::Challenge("Digest realm=\"x\", nonce=\"1\", qop=\"auth\"");
    const LoopbackAnswer body_ = LoopbackAnswer::Body("through the proxy");
};

TEST_F(ProxyTransfer, WaitsForSilenceOnce) {
    server_.Serve("http://silent.invalid/a.xml", LoopbackAnswer::Silence());
    server_.Serve("http://updates.invalid/a.xml", LoopbackAnswer::Body("x"));
    for (const QStringList& row : DataTable("silences.txt")) {
        SCOPED_TRACE(row.join(" | ").toStdString());
        const bool asks = row[2] == "yes";
        if (!row[3].isEmpty())
            threads_->Memory().EndCheck();
        const std::size_t before = server_.RequestCount();
        QElapsedTimer timer;
        timer.start();
        EXPECT_EQ(Fetch(row[0], IMPATIENT), row[1].isEmpty() ? RESULT_OK : RESULT_FAILED);
        EXPECT_EQ(record_.succeeded ? "" : FailureText(record_), row[1]);
        EXPECT_EQ(server_.RequestCount() - before, asks ? 1U : 0U);
        EXPECT_EQ(timer.elapsed() >= IMPATIENT.silence.count() - 10, asks && !record_.succeeded);
    }
}

TEST_F(ProxyTransfer, AsksOnlyForCredentialsThatItHasNot) {
    for (const QStringList& row : DataTable("proxy-logins.txt")) {
        SCOPED_TRACE(row.join(" | ").toStdString());
        const bool isKnown = row[1] == "known";
        BeginAnew();
        const std::size_t before = server_.RequestCount();
        Serve(row[0]);
        questions_ = 0;
        info_.SetProxyAuthRequiredCallback({});
        info_.SetCredentials(isKnown ? "user" : "", isKnown ? WORD : "");
        if (row[2] == "answered")
            AnswerWith("user", WORD);
        const int result = FetchThroughProxy();
        EXPECT_EQ(result == RESULT_OK ? "OK" : result == RESULT_ABORTED ? "ABORTED" : "FAILED", row[3]);
        EXPECT_EQ(questions_, row[4].toInt());
        QString sent;
        for (const std::string& credentials : SentCredentials(before))
            sent += credentials.empty() ? '-' : credentials == "Basic dXNlcjpww6Rzczp3b3Jk" ? '+' : '?';
        EXPECT_EQ(sent, row[5]);
        EXPECT_EQ(info_.GetRoute().credentials.password == CAtlString(WORD), isKnown || questions_ > 0)
            << "for the next";
    }
}

TEST_F(ProxyTransfer, NeverSendsThePasswordReadablyWhereBetterIsOffered) {
    for (const QStringList& row : DataTable("proxy-schemes.txt")) {
        SCOPED_TRACE(row.join(" | ").toStdString());
        BeginAnew();
        const std::size_t before = server_.RequestCount();
        Serve(row[0]);
        info_.SetCredentials("user", "word");
        EXPECT_EQ(FetchThroughProxy() == RESULT_OK, row[2] == "yes");
        EXPECT_LE(server_.RequestCount(), before + QHttp::MAX_CHALLENGES);
        const std::string last = SentCredentials(before).back();
        EXPECT_EQ(last.substr(0, last.find(' ')), row[1].toStdString());
        const bool isBasicFirst = row[0].startsWith("Basic");
        EXPECT_THAT(SentCredentials(before + (isBasicFirst ? 2 : 0)),
                    testing::Not(testing::Contains(testing::StartsWith("Basic"))));
    }
}

TEST_F(ProxyTransfer, ShowsTheTicketBeforeItAsks) {
    std::optional<KerberosRealm> realm;
    for (const QStringList& row : DataTable("proxy-tickets.txt")) {
        SCOPED_TRACE(row.join(" | ").toStdString());
        realm.emplace();
        if (row[3] == "is silent")
            realm->FallSilent();
        BeginAnew();
        info_.SetCredentials("", "");
        questions_ = 0;
        info_.SetProxyAuthRequiredCallback({});
        if (row[2].isEmpty())
            AnswerWith("user", "word");
        const std::size_t before = server_.RequestCount();
        Serve(row[0]);
        std::string schemes;
        for (int file = 0; file < 3; ++file) {
            if (file == 2)
                threads_->Memory().EndCheck();
            EXPECT_EQ(Fetch(ADDRESS, {.connect = 1s}) == RESULT_OK, row[2].isEmpty());
            EXPECT_EQ(record_.succeeded ? "" : FailureText(record_), row[2]);
        }
        for (const std::string& sent : SentCredentials(before))
            schemes += sent.empty() ? '-' : sent.front();
        EXPECT_EQ(schemes, row[1].toStdString());
    }
}

TEST_F(ProxyTransfer, LogsAConnectionInOnce) {
    std::vector<LoopbackAnswer> answers =
        AnswersOf("NTLM / NTLM ... / body / body / gone / body / NTLM / NTLM ... / body");
    answers[1].body = answers[7].body = LINES;
    Serve(answers);
    info_.SetCredentials("user", WORD);
    std::string kinds;
    for (const int result : {RESULT_OK, RESULT_OK, RESULT_FAILED, RESULT_OK, RESULT_OK})
        EXPECT_EQ(FetchThroughProxy(), result);
    // This character of the Base64 has the message's type: B is 1, the request for a challenge, D is 3, the
    // answer.
    for (const std::string& sent : SentCredentials(0))
        kinds += sent.empty() ? '-' : sent.at(16);
    EXPECT_EQ(kinds, "-BD----BD");
    EXPECT_EQ(server_.Connections(), 1) << "it reads the challenges to their ends";
}

TEST_F(ProxyTransfer, TellsAndForgivesAQuestionThatItCannotAnswer) {
    info_.SetCredentials("user", WORD);
    Serve({LoopbackAnswer::Status(407), basic_, body_});
    EXPECT_EQ(FetchThroughProxy(), RESULT_ABORTED);
    EXPECT_EQ(FetchThroughProxy(), RESULT_OK) << "one answer of many";
    Serve({LoopbackAnswer::Challenge("Bearer")});
    EXPECT_EQ(FetchThroughProxy(), RESULT_ABORTED);
    EXPECT_EQ(FailureText(record_), "Proxy 127.0.0.1: It offers no way to log in that this program can use");
    for (const char* answers :
         {"lost", "Basic realm=x / lost", "Negotiate + Digest realm=x, nonce=1 / lost"}) {
        BeginAnew();
        Serve(answers);
        FetchThroughProxy();
        EXPECT_EQ(FailureText(record_), "Proxy 127.0.0.1: No answer") << answers;
    }
}

TEST(ProxyChallenges, NtlmIsAnsweredWithoutThePassword) {
    const auto answer = [](const QString& user, const QByteArray& message = NTLM) {
        const auto challenge = CNtlmChallenge::From(ParseChallenges(message).front());
        const QDateTime start(QDate(1601, 1, 1), QTime(0, 0), Qt::UTC);
        return QByteArray::fromBase64(challenge->Answer(user, "Password", 0xAAAAAAAAAAAAAAAA, start).mid(5));
    };
    const auto proof =
        QByteArray::fromHex("68cd0ab851e51c96aabc927bebef6a1c01010000000000000000000000000000aaaa");
    EXPECT_TRUE(answer("Domain\\User").contains(proof));
    EXPECT_TRUE(answer("Domain\\weiß").contains(QByteArray::fromHex("152d6083b05228c2089c1b0c6b944679")));
    const QByteArray names = QByteArray::fromHex("53006500720076006500720055007300650072000000");
    EXPECT_TRUE((answer("User") + QByteArray(2, 0)).endsWith(names)) << "the challenge's domain";
    EXPECT_EQ(answer("User@server").mid(28, 2), QByteArray(2, 0)) << "no domain";

    const QByteArray time = QByteArray::fromHex("0102030405060708");
    QByteArray timed = QByteArray::fromBase64(QByteArray(NTLM).mid(5));
    timed.replace(40, 8, QByteArray::fromHex("0c000c0068000000"));
    timed += QByteArray::fromHex("07000800") + time;
    EXPECT_TRUE(answer("User", "NTLM " + timed.toBase64()).contains("\1\1" + QByteArray(6, 0) + time));
}

TEST_F(ProxyTransfer, SendsNoRefusedPasswordAgainAfterNtlmAskedTooOften) {
    Serve("NTLM / NTLM ... / NTLM / NTLM ... / NTLM / NTLM / NTLM ... / body");
    AnswerWith("user", "wrong");
    EXPECT_EQ(FetchThroughProxy(), RESULT_FAILED);
    EXPECT_EQ(questions_, 2);
    AnswerWith("user", WORD);
    EXPECT_EQ(FetchThroughProxy(), RESULT_OK);
    const std::vector<std::string> sent = SentCredentials(0);
    EXPECT_EQ(std::count(sent.begin(), sent.end(), ""), 2) << "it asks first";
}

// The example of RFC 2617, 3.5, without and with a quality of protection.
TEST(ProxyChallenges, DigestIsAnsweredWithoutThePassword) {
    const QByteArray challenge =
        "Basic realm=x, digest REALM = \"testrealm@host.com\", "
        "nonce=\"dcd98b7102dd2f0e\\8b11d0f600bfb0c093\", algorithm=MD5, opaque=\"5, c\"";
    const auto answer = [](const QByteArray& fields) {
        auto digest = CDigestChallenge::From(ParseChallenges(fields).back());
        QByteArray first = digest->Answer("Mufasa", "Circle Of Life", "/dir/index.html");
        const QByteArray second = digest->Answer("Mufasa", "Circle Of Life", "/dir/index.html");
        EXPECT_EQ(second.contains("nc=00000002"), first.contains("nc="));
        return first;
    };
    EXPECT_TRUE(answer(challenge).endsWith(
        ", algorithm=MD5, opaque=\"5, c\", response=\"670fd8c2df070c60b045671b8b24ff02\""));
    const auto guarded = ParseChallenges(answer(challenge + ", qop=\"auth-int, auth\"")).back().parameters;
    const QByteArray hashed = "939e7578ed9e3c518a452acee763bce9:" + guarded["nonce"] +
                              ":00000001:" + guarded["cnonce"] + ":auth:39aff3a2bab6126f332b942af96d3366";
    EXPECT_EQ(guarded["response"], QCryptographicHash::hash(hashed, QCryptographicHash::Md5).toHex());
}

TEST_F(ProxyTransfer, DoesNotSendRefusedCredentialsAgain) {
    for (const LoopbackAnswer& challenge : {basic_, digest_}) {
        BeginAnew();
        Serve({challenge});
        const std::size_t before = server_.RequestCount();
        for (int file = 0; file < 3; ++file) {
            info_.SetCredentials("user", "wrong");
            EXPECT_EQ(FetchThroughProxy(), RESULT_ABORTED);
        }
        const std::vector<std::string> sent = SentCredentials(before);
        EXPECT_EQ(std::count(sent.begin(), sent.end(), ""), static_cast<std::ptrdiff_t>(sent.size()) - 1);
    }
    Serve({basic_, body_});
    info_.SetCredentials("user", "wrong");
    AnswerWith("user", "wrong");
    BeginAnew();
    EXPECT_EQ(FetchThroughProxy(), RESULT_OK) << "what was typed anew";
}

// Neither accepts nor refuses connections after the first two: the system drops their requests.
class SilentServer {
public:
    explicit SilentServer(quint16 port) {
        server_.setListenBacklogSize(0);
        EXPECT_TRUE(server_.listen(QHostAddress(ADDRESS), port));
        server_.pauseAccepting();
        for (QTcpSocket& visitor : visitors_) {
            visitor.connectToHost(ADDRESS, port);
            visitor.waitForConnected(100);
        }
    }

    static constexpr const char* ADDRESS = "127.0.0.2";

private:
    QTcpServer server_;
    QTcpSocket visitors_[2];
};

QList<QHostAddress> Addresses(const QStringList& texts) {
    QList<QHostAddress> addresses;
    for (const QString& text : texts)
        addresses << QHostAddress(text);
    return addresses;
}

class HostConnection : public testing::Test {
protected:
    HostConnection() { EXPECT_TRUE(server_.listen(QHostAddress::LocalHost)); }

    // The address that the connection reaches, or the error, within a second.
    QString PeerOf(const QList<QHostAddress>& addresses) {
        QString error = "nothing yet";
        timer_.start();
        const auto wait = [this](const boost::function<bool()>& keepWaiting) {
            WaitWithQtEvents([&] { return keepWaiting() && timer_.elapsed() < 1000; }).Wait();
            return !keepWaiting();
        };
        const auto socket = ConnectToAny(addresses, server_.serverPort(), wait, error);
        return socket ? socket->peerAddress().toString() : error;
    }

    QTcpServer server_;
    QElapsedTimer timer_;
};

TEST_F(HostConnection, FindsTheAddressThatAnswers) {
    const SilentServer silent(server_.serverPort());
    for (const QStringList& row : DataTable("host-addresses.txt")) {
        SCOPED_TRACE(row.join(" | ").toStdString());
        EXPECT_EQ(PeerOf(Addresses(row[0].split(' '))), row[1]);
        EXPECT_GE(timer_.elapsed(), row[2].toInt());
        EXPECT_LE(timer_.elapsed(), row[3].toInt());
    }
}

TEST(HostAddresses, TakeTurns) {
    EXPECT_EQ(InTurns(Addresses({"::1", "::2", "::3", "0.0.0.1", "0.0.0.2"})),
              Addresses({"::1", "0.0.0.1", "::2", "0.0.0.2", "::3"}));
}

}  // namespace
