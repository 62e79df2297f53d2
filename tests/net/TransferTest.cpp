// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// One transfer: what is asked for, what counts as success and what is left of the file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <csignal>
#include <thread>

#include <sys/resource.h>
#include <unistd.h>

#include "net/ConnectionInfo.h"
#include "net/QtDownloader.h"
#include "platform/ResultCodes.h"
#include "support/LoopbackServer.h"
#include "support/ScopedEnvironment.h"
#include "support/TextPrinting.h"

using namespace std::chrono_literals;

namespace {

const char* const NO_FILE = "(no file)";

class Transfer : public testing::Test {
protected:
    Transfer() { QFile::remove(target_.ToQString()); }

    int Fetch(const QString& address, const TransferBounds& bounds = {.silence = 10s}) {
        QtDownloader downloader(bounds);
        return downloader.DownloadOnThread(CAtlString(address), target_, &info_);
    }

    std::string Contents() const {
        QFile file(target_.ToQString());
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : NO_FILE;
    }

    // Answers every question for credentials with these, and counts the questions.
    void AnswerWith(const char* userName, const char* password) {
        info_.SetProxyAuthRequiredCallback(
            [this, userName, password](const CAtlString&, int, CAtlString& user, CAtlString& word) {
                ++questions_;
                user = userName;
                word = password;
                return true;
            });
    }

    LoopbackServer server_;
    ConnectionInfo info_;
    CAtlString target_{L"/tmp/transfer.dat"};
    int questions_ = 0;
};

// Tells something, or asks, and ends while the asking thread looks elsewhere.
class HastyTransfer : public QtDownloaderBase {
public:
    explicit HastyTransfer(bool asks) : asks_(asks) {}

private:
    int Download(const CAtlString& /*url*/, const CAtlString& /*file*/) override {
        emit DataReadProgressSignal(7, 9);
        emit ConnectionFailedSignal(L"too fast");
        CAtlString userName;
        CAtlString password;
        return asks_ && RequestProxyAuth(L"proxy", 1, userName, password) ? RESULT_OK : RESULT_FAILED;
    }

    bool asks_;
};

struct Answered {
    const char* situation;
    LoopbackAnswer answer;
    int result;
    std::string file;
    TransferBounds bounds{.silence = 10s};
    friend void PrintTo(const Answered& row, std::ostream* out) { *out << row.situation; }
};

class TransferAnswers : public Transfer, public testing::WithParamInterface<Answered> {};

LoopbackAnswer Raw(const std::string& bytes) {
    return {.body = bytes, .isRaw = true};
}

const LoopbackAnswer CHUNKS =
    Raw("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4\r\nbody\r\n0\r\n\r\n");

// For the length of a scope no file may grow beyond so many bytes.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &previous_);
        const rlimit limit{bytes, previous_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &previous_);
        std::signal(SIGXFSZ, handler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    void (*handler_)(int);
    rlimit previous_{};
};

const std::string LARGE(3'000'000, 'x');
const LoopbackAnswer STALLED{.body = "half", .announcedLength = 8, .holdOpen = true};

std::string LongHead() {
    std::string head = "HTTP/1.1 200 OK\r\n";
    for (int i = 0; i < 10'000; ++i)
        head += "X: y\r\n";
    return head;
}

const TransferBounds IMPATIENT{.silence = 100ms, .wholeTime = 10s};
const TransferBounds HURRIED{.silence = 10s, .wholeTime = 300ms};
const TransferBounds HEADSTRONG{.silence = 10s, .head = 300ms};
const TransferBounds NARROW{.bodyBytes = 1000};

const Answered ANSWERS[] = {
    {"LargeBody", {.body = LARGE}, RESULT_OK, LARGE},
    {"LateBody", {.body = "late", .delay = 50ms}, RESULT_OK, "late"},
    {"CompressedAnyway", {.body = "\x1f\x8b", .headers = {"Content-Encoding: gzip"}}, RESULT_OK, "\x1f\x8b"},
    {"BodyWithoutLength", Raw("HTTP/1.0 200 OK\r\n\r\nto the end"), RESULT_OK, "to the end"},
    {"EmptyBody", {}, RESULT_FAILED, ""},
    {"Created", {.status = 201, .body = "x"}, RESULT_FAILED, NO_FILE},
    {"NoContent", {.status = 204}, RESULT_FAILED, NO_FILE},
    {"Moved", {.status = 302, .body = "x", .headers = {"Location: /elsewhere"}}, RESULT_FAILED, NO_FILE},
    {"OriginWantsCredentials",
     {.status = 401, .headers = {"WWW-Authenticate: Basic realm=\"x\""}},
     RESULT_FAILED,
     NO_FILE},
    {"NotFound", {.status = 404, .body = "x"}, RESULT_FAILED, NO_FILE},
    {"ServerError", {.status = 500, .body = "x"}, RESULT_FAILED, NO_FILE},
    {"CutOffBody", {.body = "half", .announcedLength = 8}, RESULT_FAILED, NO_FILE},
    {"CutOffLargeBody", {.body = LARGE, .announcedLength = 6'000'000}, RESULT_FAILED, NO_FILE},
    {"CutOffBeforeTheBody", {.announcedLength = 8}, RESULT_FAILED, NO_FILE},
    {"CutOffErrorBody", {.status = 404, .body = "half", .announcedLength = 8}, RESULT_FAILED, NO_FILE},
    {"CutOffHead", Raw("HTTP/1.1 200 OK\r\nContent-Le"), RESULT_FAILED, ""},
    {"Chunks", CHUNKS, RESULT_OK, "body"},
    {"NotHttp", {.body = "220 mail.example ready\r\n", .isRaw = true, .holdOpen = true}, RESULT_FAILED, ""},
    {"Silent", LoopbackAnswer::Silence(), RESULT_FAILED, NO_FILE, IMPATIENT},
    {"Stalled", STALLED, RESULT_FAILED, NO_FILE, IMPATIENT},
    {"StalledInstaller", STALLED, RESULT_FAILED, NO_FILE, IMPATIENT.ForInstaller()},
    {"DrippingWithoutEnd",
     {.body = std::string(100'000, '.'), .pause = 1ms},
     RESULT_FAILED,
     NO_FILE,
     HURRIED},
    {"HeadWithoutEnd", {.body = LongHead(), .pause = 1ms, .isRaw = true}, RESULT_FAILED, NO_FILE, HURRIED},
    {"InstallerHeadWithoutEnd",
     {.body = LongHead(), .pause = 1ms, .isRaw = true},
     RESULT_FAILED,
     NO_FILE,
     HEADSTRONG.ForInstaller()},
    {"DrippingInstaller",
     {.body = std::string(600, '.'), .pause = 1ms},
     RESULT_OK,
     std::string(600, '.'),
     HURRIED.ForInstaller()},
    {"AsLargeAsMayBe", {.body = std::string(1000, 'x')}, RESULT_OK, std::string(1000, 'x'), NARROW},
    {"TooLarge", {.body = std::string(1001, 'x')}, RESULT_FAILED, NO_FILE, NARROW},
    {"TooLargeWithoutLength", Raw("HTTP/1.0 200 OK\r\n\r\n" + LARGE), RESULT_FAILED, NO_FILE, NARROW},
    {"TooLargeByDefault",
     {.body = std::string(16 * 1024 * 1024 + 1, 'x')},
     RESULT_FAILED,
     NO_FILE,
     TransferBounds{}},
    {"LargeInstaller", {.body = LARGE}, RESULT_OK, LARGE, NARROW.ForInstaller()},
    {"InstallerInChunks", CHUNKS, RESULT_FAILED, NO_FILE, NARROW.ForInstaller()},
};

}  // namespace

TEST_P(TransferAnswers, DecideResultAndFileWithinTheirBounds) {
    const Answered& row = GetParam();
    server_.Serve("/file.xml", row.answer);
    server_.Serve("/elsewhere", LoopbackAnswer::Body("not to be followed"));
    QFile(target_.ToQString()).open(QIODevice::WriteOnly);

    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(Fetch(server_.Address("/file.xml"), row.bounds), row.result);
    EXPECT_LT(timer.elapsed(), 5000);
    EXPECT_EQ(Contents(), row.file);
    EXPECT_THAT(server_.Targets(), testing::Each("/file.xml"));
}

INSTANTIATE_TEST_SUITE_P(, TransferAnswers, testing::ValuesIn(ANSWERS),
                         [](const auto& row) { return row.param.situation; });

TEST_F(Transfer, AsksForThePathAlone) {
    const std::pair<const char*, const char*> rows[] = {
        {"/a/b.xml?x=1#top", "/a/b.xml"},
        {"", "/"},
        {"?x=1", "/"},
        {"/two words/%2Fslash%20.xml", "/two%20words/%2Fslash%20.xml"},
        {"/\xc3\xa4.xml", "/%C3%A4.xml"},
    };
    server_.Serve(LoopbackServer::ANY, LoopbackAnswer::Body("x"));
    for (const auto& [asked, sent] : rows) {
        ASSERT_EQ(Fetch(server_.Address(asked)), RESULT_OK) << asked;
        EXPECT_EQ(server_.Requests().back().target, sent);
    }
}

TEST_F(Transfer, SendsAPlainRequest) {
    server_.Serve("/", LoopbackAnswer::Body("x"));
    Fetch(server_.Address("/"));
    ASSERT_EQ(server_.RequestCount(), 1U);
    const LoopbackRequest request = server_.Requests().front();
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.headers.at("host"), "127.0.0.1:" + std::to_string(server_.Port()));
    EXPECT_EQ(request.headers.at("accept-encoding"), "identity");
    EXPECT_EQ(request.headers.at("connection"), "close");
    EXPECT_EQ(request.headers.at("user-agent"), "Mozilla/5.0");
    for (const char* name : {"cookie", "upgrade", "proxy-authorization", "authorization"})
        EXPECT_FALSE(request.headers.contains(name)) << name;
}

TEST_F(Transfer, RefusesOtherSchemesWithoutTraffic) {
    server_.Serve("/", LoopbackAnswer::Body("x"));
    QFile(target_.ToQString()).open(QIODevice::WriteOnly);
    for (const char* scheme : {"https", "ftp", "file", "httpx", ""}) {
        QString address = server_.Address("/");
        EXPECT_EQ(Fetch(address.replace(0, 4, scheme)), RESULT_FAILED) << scheme;
    }
    for (const char* address : {"", "not an address"})
        EXPECT_EQ(Fetch(address), RESULT_FAILED) << address;
    EXPECT_EQ(server_.RequestCount(), 0U);
    EXPECT_EQ(Contents(), "") << "the file was touched";
    EXPECT_EQ(Fetch("http:///a.xml"), RESULT_FAILED) << "nobody to ask";
}

TEST_F(Transfer, ReportsARefusedConnectionOnTheAskingThread) {
    int port = 0;
    {
        const LoopbackServer closed;
        port = closed.Port();
    }
    QStringList errors;
    QThread* thread = nullptr;
    info_.SetConnectionFailedCallback([&](const CAtlString& error) {
        errors << error.ToQString();
        thread = QThread::currentThread();
    });
    EXPECT_EQ(Fetch(QStringLiteral("http://127.0.0.1:%1/").arg(port)), RESULT_FAILED);
    EXPECT_EQ(errors, QStringList("Connection refused"));
    EXPECT_EQ(thread, QThread::currentThread());
    EXPECT_EQ(Contents(), "");
}

TEST_F(Transfer, ReportsProgressOnTheAskingThread) {
    server_.Serve("/", LoopbackAnswer::Body(LARGE));
    std::vector<int> done;
    int total = 0;
    info_.SetProgressCallback([&](int now, int all) {
        EXPECT_EQ(QThread::currentThread(), qApp->thread());
        done.push_back(now);
        total = all;
    });
    EXPECT_EQ(Fetch(server_.Address("/")), RESULT_OK);
    ASSERT_FALSE(done.empty());
    EXPECT_TRUE(std::is_sorted(done.begin(), done.end()));
    EXPECT_EQ(done.back(), static_cast<int>(LARGE.size()));
    EXPECT_EQ(total, static_cast<int>(LARGE.size()));

    done.clear();
    server_.Serve("/", {.body = std::string(300, '.'), .pause = 1ms});
    EXPECT_EQ(Fetch(server_.Address("/")), RESULT_OK);
    EXPECT_GT(done.size(), 1U) << "on the way";
    EXPECT_LT(done.size(), 100U) << "but not of every byte";
}

TEST_F(Transfer, FailsWhenTheFileCannotBeWritten) {
    for (const std::string& body : {LARGE, std::string("small")}) {
        server_.Serve("/", LoopbackAnswer::Body(body));
        const FullDisk full(body.size() / 2);
        EXPECT_EQ(Fetch(server_.Address("/")), RESULT_FAILED);
        EXPECT_EQ(Contents(), NO_FILE);
    }
    server_.Serve("/", LoopbackAnswer::Body("x"));
    target_ = L"/tmp/missing/transfer.dat";
    EXPECT_EQ(Fetch(server_.Address("/")), RESULT_FAILED);
}

// Another user of a folder that all can write wins now and then, but nothing of another file.
TEST_F(Transfer, NeverWritesThroughALinkThatAppearsInItsWay) {
    const QString victim("/tmp/victim");
    const QByteArray link = target_.ToQString().toUtf8();
    ASSERT_TRUE(QFile(victim).open(QIODevice::WriteOnly));
    server_.Serve("/", LoopbackAnswer::Body("x"));
    std::atomic<bool> isOver = false;
    std::thread neighbour([&] {
        while (!isOver)
            static_cast<void>(symlink("/tmp/victim", link.constData()));
    });
    int refused = 0;
    QElapsedTimer timer;
    timer.start();
    while (refused < 20 && timer.elapsed() < 10000 && QFile(victim).size() == 0)
        refused += Fetch(server_.Address("/")) == RESULT_FAILED ? 1 : 0;
    isOver = true;
    neighbour.join();
    EXPECT_GT(refused, 0);
    EXPECT_EQ(QFile(victim).size(), 0);
    QFile::remove(target_.ToQString());
    QFile::remove(victim);
}

class ProxyTransfer : public Transfer {
protected:
    ProxyTransfer() { info_.SetProxy(L"127.0.0.1", server_.Port()); }

    int FetchThroughProxy() { return Fetch(ADDRESS); }
    void Serve(std::vector<LoopbackAnswer> answers) { server_.Serve(ADDRESS, std::move(answers)); }

    std::vector<std::string> SentCredentials() const {
        std::vector<std::string> sent;
        for (const LoopbackRequest& request : server_.Requests()) {
            const auto found = request.headers.find("proxy-authorization");
            sent.push_back(found == request.headers.end() ? "" : found->second);
        }
        return sent;
    }

    static constexpr const char* WORD = "p\xc3\xa4ss:word";
    // Known to no resolver.
    static constexpr const char* ADDRESS = "http://updates.invalid/list.xml";
    const LoopbackAnswer basic_ = LoopbackAnswer::Challenge("Basic realm=\"Digest nonce=1, x\"");
    const LoopbackAnswer digest_ = LoopbackAnswer::Challenge("Digest realm=\"x\", nonce=\"1\", qop=\"auth\"");
    const LoopbackAnswer body_ = LoopbackAnswer::Body("through the proxy");
};

TEST_F(ProxyTransfer, AsksOnlyForCredentialsThatItHasNot) {
    const std::string word = "Basic dXNlcjpww6Rzczp3b3Jk";
    const struct {
        const char* situation;
        std::vector<LoopbackAnswer> answers;
        bool known, answered;
        int result, questions;
        std::vector<std::string> sent;
    } rows[] = {
        {"an open proxy", {body_}, false, true, RESULT_OK, 0, {""}},
        {"nobody answers the challenge", {basic_, body_}, false, false, RESULT_ABORTED, 0, {""}},
        {"answered", {basic_, body_}, false, true, RESULT_OK, 1, {"", word}},
        {"known before", {basic_, body_}, true, true, RESULT_OK, 0, {"", word}},
        {"refused twice", {basic_, basic_, basic_, body_}, false, true, RESULT_OK, 3, {"", word, word, word}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.situation);
        const auto already = static_cast<std::ptrdiff_t>(server_.RequestCount());
        Serve(row.answers);
        questions_ = 0;
        info_.SetProxyAuthRequiredCallback({});
        info_.SetCredentials(row.known ? "user" : "", row.known ? WORD : "");
        if (row.answered)
            AnswerWith("user", WORD);
        EXPECT_EQ(FetchThroughProxy(), row.result);
        EXPECT_EQ(questions_, row.questions);
        std::vector<std::string> sent = SentCredentials();
        sent.erase(sent.begin(), sent.begin() + already);
        EXPECT_EQ(sent, row.sent);
        const bool kept = info_.GetPassword() == CAtlString(WORD);
        EXPECT_EQ(kept, sent.back() == word) << "for the next transfer";
    }
    EXPECT_EQ(Contents(), "through the proxy");
    EXPECT_THAT(server_.Targets(), testing::Each(ADDRESS));
}

TEST_F(ProxyTransfer, NeverSendsThePasswordReadablyWhenDigestIsOffered) {
    LoopbackAnswer both = basic_;
    both.headers.push_back(digest_.headers.front());
    const LoopbackAnswer half{.body = "half", .announcedLength = 8};
    for (const LoopbackAnswer& challenge : {digest_, both})
        for (const LoopbackAnswer& answer : {half, body_}) {
            Serve({challenge, challenge, answer});
            AnswerWith("user", "word");
            info_.SetCredentials(CAtlString(), CAtlString());
            EXPECT_EQ(FetchThroughProxy(), answer.announcedLength < 0 ? RESULT_OK : RESULT_FAILED);
            EXPECT_THAT(SentCredentials().back(), testing::StartsWith("Digest "));
            EXPECT_THAT(SentCredentials(), testing::Not(testing::Contains(testing::StartsWith("Basic"))));
        }
}

// The status of the attempt before still stands when a later one gets no answer.
TEST_F(ProxyTransfer, AsksAgainWhenTheRetryBreaksOff) {
    std::vector<LoopbackAnswer> answers(10, Raw("garbage"));
    answers.front() = basic_;
    answers.push_back(body_);
    Serve(answers);
    AnswerWith("user", "word");
    EXPECT_EQ(FetchThroughProxy(), RESULT_OK);
    EXPECT_GT(questions_, 1);
}

TEST_F(Transfer, HearsWhatWasToldJustBeforeTheEndButNoQuestionOfACancelledTransfer) {
    int done = 0;
    CAtlString error;
    info_.SetProgressCallback([&](int bytes, int /*total*/) { done = bytes; });
    info_.SetConnectionFailedCallback([&](const CAtlString& text) { error = text; });
    AnswerWith("user", "word");
    for (const bool asks : {false, true}) {
        HastyTransfer transfer(asks);
        transfer.Start(CAtlString(), CAtlString(), &info_);
        QThread::msleep(50);
        if (asks)
            transfer.Cancel();
        QThread::msleep(50);
        transfer.Finish();
    }
    EXPECT_EQ(done, 7);
    EXPECT_EQ(error, L"too fast");
    EXPECT_EQ(questions_, 0);
}

TEST_F(ProxyTransfer, LetsEventsFlowThroughAnEndlessChainOfChallenges) {
    Serve({basic_});
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
    timer.start(1ms);
    info_.SetProxyAuthRequiredCallback([&](const CAtlString&, int, CAtlString& user, CAtlString&) {
        user = "user";
        return ticks < 20;
    });
    EXPECT_EQ(FetchThroughProxy(), RESULT_ABORTED);
    EXPECT_GE(ticks, 20);
}

TEST_F(ProxyTransfer, GoesDirectWithoutAProxyWhateverTheEnvironmentSays) {
    const ScopedEnvironment environment("http_proxy", server_.Address("/").toUtf8().constData());
    LoopbackServer origin;
    origin.Serve("/a.xml", LoopbackAnswer::Body("direct"));
    info_.SetProxy(CAtlString(), 0);
    EXPECT_EQ(Fetch(origin.Address("/a.xml")), RESULT_OK);
    EXPECT_EQ(server_.RequestCount(), 0U);
}
