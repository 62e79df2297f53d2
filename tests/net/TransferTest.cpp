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
#include <csignal>

#include <sys/resource.h>

#include "net/ConnectionInfo.h"
#include "net/QtDownloader.h"
#include "platform/ResultCodes.h"
#include "support/LoopbackServer.h"
#include "support/ScopedEnvironment.h"
#include "support/TextPrinting.h"

using testing::ElementsAre;
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

struct Answered {
    const char* situation;
    LoopbackAnswer answer;
    int result;
    std::string file;
};

class TransferAnswers : public Transfer, public testing::WithParamInterface<Answered> {};

LoopbackAnswer With(LoopbackAnswer answer, const char* header) {
    answer.headers.emplace_back(header);
    return answer;
}

LoopbackAnswer CutOff(const std::string& body, std::size_t announced, int status = 200) {
    LoopbackAnswer answer = LoopbackAnswer::Status(status, body);
    answer.announcedLength = static_cast<long>(announced);
    return answer;
}

LoopbackAnswer Late(std::chrono::milliseconds delay) {
    LoopbackAnswer answer = LoopbackAnswer::Body("late");
    answer.delay = delay;
    return answer;
}

LoopbackAnswer Raw(const std::string& bytes) {
    LoopbackAnswer answer = LoopbackAnswer::Body(bytes);
    answer.isRaw = true;
    return answer;
}

LoopbackAnswer Chunked(const std::string& chunks) {
    return Raw("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + chunks);
}

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

const Answered ANSWERS[] = {
    {"Ok", LoopbackAnswer::Body("<a/>"), RESULT_OK, "<a/>"},
    {"LargeBody", LoopbackAnswer::Body(LARGE), RESULT_OK, LARGE},
    {"LateBody", Late(50ms), RESULT_OK, "late"},
    {"CompressedAnywayIsKeptAsSent", With(LoopbackAnswer::Body("\x1f\x8b"), "Content-Encoding: gzip"),
     RESULT_OK, "\x1f\x8b"},
    {"BodyWithoutLength", Raw("HTTP/1.0 200 OK\r\n\r\nto the end"), RESULT_OK, "to the end"},
    {"EmptyBody", LoopbackAnswer::Body(""), RESULT_FAILED, ""},
    {"Created", LoopbackAnswer::Status(201), RESULT_FAILED, NO_FILE},
    {"NoContent", LoopbackAnswer::Status(204, ""), RESULT_FAILED, NO_FILE},
    {"MovedForGood", With(LoopbackAnswer::Status(301), "Location: /elsewhere"), RESULT_FAILED, NO_FILE},
    {"MovedForNow", With(LoopbackAnswer::Status(302), "Location: /elsewhere"), RESULT_FAILED, NO_FILE},
    {"OriginWantsCredentials", With(LoopbackAnswer::Status(401), "WWW-Authenticate: Basic realm=\"x\""),
     RESULT_FAILED, NO_FILE},
    {"NotFound", LoopbackAnswer::Status(404), RESULT_FAILED, NO_FILE},
    {"ServerError", LoopbackAnswer::Status(500), RESULT_FAILED, NO_FILE},
    {"CutOffBody", CutOff("half", 8), RESULT_FAILED, NO_FILE},
    {"CutOffLargeBody", CutOff(LARGE, 2 * LARGE.size()), RESULT_FAILED, NO_FILE},
    {"CutOffBeforeTheBody", CutOff("", 8), RESULT_FAILED, NO_FILE},
    {"CutOffErrorBody", CutOff("half", 8, 404), RESULT_FAILED, NO_FILE},
    {"CutOffHead", Raw("HTTP/1.1 200 OK\r\nContent-Le"), RESULT_FAILED, ""},
    {"Chunks", Chunked("4\r\nbody\r\n0\r\n\r\n"), RESULT_OK, "body"},
    {"NotHttp", Raw("220 mail.example ready\r\n"), RESULT_FAILED, ""},
    {"NothingAtAll", Raw(""), RESULT_FAILED, ""},
};

}  // namespace

TEST_P(TransferAnswers, DecideResultAndFile) {
    const Answered& row = GetParam();
    server_.Serve("/file.xml", row.answer);
    server_.Serve("/elsewhere", LoopbackAnswer::Body("not to be followed"));
    QFile(target_.ToQString()).open(QIODevice::WriteOnly);

    EXPECT_EQ(Fetch(server_.Address("/file.xml")), row.result);
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
    EXPECT_EQ(server_.RequestCount(), 0U);
    EXPECT_EQ(Contents(), "") << "the file was touched";
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
}

struct Bounded {
    const char* situation;
    LoopbackAnswer answer;
    TransferBounds bounds;
    int result;
};

class TransferWithin : public Transfer, public testing::WithParamInterface<Bounded> {};

LoopbackAnswer Stalled() {
    LoopbackAnswer answer = CutOff("half", 8);
    answer.holdOpen = true;
    return answer;
}

LoopbackAnswer Dripping(int bytes) {
    LoopbackAnswer answer = LoopbackAnswer::Body(std::string(static_cast<std::size_t>(bytes), '.'));
    answer.pause = 1ms;
    return answer;
}

LoopbackAnswer EndlessHead() {
    LoopbackAnswer answer = Dripping(1'000'000);
    answer.isRaw = true;
    answer.body = "HTTP/1.1 200 OK\r\n";
    for (int i = 0; i < 10'000; ++i)
        answer.body += "X: y\r\n";
    return answer;
}

const TransferBounds IMPATIENT{.silence = 100ms, .wholeTime = 10s};
const TransferBounds HURRIED{.silence = 10s, .wholeTime = 300ms};
const TransferBounds NARROW{.bodyBytes = 1000};

const Bounded BOUNDED[] = {
    {"Silent", LoopbackAnswer::Silence(), IMPATIENT, RESULT_FAILED},
    {"SilentInstaller", LoopbackAnswer::Silence(), IMPATIENT.ForInstaller(), RESULT_FAILED},
    {"Stalled", Stalled(), IMPATIENT, RESULT_FAILED},
    {"StalledInstaller", Stalled(), IMPATIENT.ForInstaller(), RESULT_FAILED},
    {"DrippingWithoutEnd", Dripping(100'000), HURRIED, RESULT_FAILED},
    {"HeadWithoutEnd", EndlessHead(), HURRIED, RESULT_FAILED},
    {"DrippingInstaller", Dripping(600), HURRIED.ForInstaller(), RESULT_OK},
    {"AsLargeAsMayBe", LoopbackAnswer::Body(std::string(1000, 'x')), NARROW, RESULT_OK},
    {"TooLarge", LoopbackAnswer::Body(std::string(1001, 'x')), NARROW, RESULT_FAILED},
    {"TooLargeByFar", LoopbackAnswer::Body(LARGE), NARROW, RESULT_FAILED},
    {"TooLargeWithoutLength", Raw("HTTP/1.0 200 OK\r\n\r\n" + LARGE), NARROW, RESULT_FAILED},
    {"TooLargeByDefault", LoopbackAnswer::Body(std::string(16 * 1024 * 1024 + 1, 'x')), {}, RESULT_FAILED},
    {"LargeInstaller", LoopbackAnswer::Body(LARGE), NARROW.ForInstaller(), RESULT_OK},
    {"InstallerInChunks", Chunked("4\r\nbody\r\n0\r\n\r\n"), NARROW.ForInstaller(), RESULT_FAILED},
};

TEST_P(TransferWithin, BoundsDecidesResultAndTime) {
    const Bounded& row = GetParam();
    server_.Serve("/", row.answer);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(Fetch(server_.Address("/"), row.bounds), row.result);
    EXPECT_LT(timer.elapsed(), 5000);
    EXPECT_EQ(Contents() == NO_FILE, row.result != RESULT_OK);
}

INSTANTIATE_TEST_SUITE_P(, TransferWithin, testing::ValuesIn(BOUNDED),
                         [](const auto& row) { return row.param.situation; });

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

TEST_F(Transfer, NeverWaitsForThePoll) {
    server_.Serve("/", LoopbackAnswer::Body("x"));
    constexpr int FETCHES = 20;
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < FETCHES; ++i)
        ASSERT_EQ(Fetch(server_.Address("/")), RESULT_OK);
    const qint64 each = timer.elapsed() / FETCHES;
    RecordProperty("millisecondsEach", static_cast<int>(each));
    EXPECT_LT(each, 100);
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

    // Known to no resolver.
    static constexpr const char* ADDRESS = "http://updates.invalid/list.xml";
    const LoopbackAnswer basic_ = LoopbackAnswer::Challenge("Basic realm=\"Digest nonce=1, x\"");
    const LoopbackAnswer digest_ = LoopbackAnswer::Challenge("Digest realm=\"x\", nonce=\"1\", qop=\"auth\"");
    const LoopbackAnswer body_ = LoopbackAnswer::Body("through the proxy");
};

TEST_F(ProxyTransfer, FetchesWithoutBeingAsked) {
    Serve({body_});
    EXPECT_EQ(FetchThroughProxy(), RESULT_OK);
    EXPECT_EQ(Contents(), "through the proxy");
    EXPECT_THAT(server_.Targets(), ElementsAre(ADDRESS));
}

TEST_F(ProxyTransfer, AbortsAfterOneRequestWhenNobodyAnswersTheChallenge) {
    Serve({basic_, body_});
    EXPECT_EQ(FetchThroughProxy(), RESULT_ABORTED);
    EXPECT_THAT(SentCredentials(), ElementsAre(""));
}

TEST_F(ProxyTransfer, SendsTheGivenCredentialsWithTheSecondRequest) {
    Serve({basic_, body_});
    AnswerWith("user", "p\xc3\xa4ss:word");
    EXPECT_EQ(FetchThroughProxy(), RESULT_OK);
    EXPECT_THAT(SentCredentials(), ElementsAre("", "Basic dXNlcjpww6Rzczp3b3Jk"));
    EXPECT_EQ(info_.GetUserName(), CAtlString("user"));
    EXPECT_EQ(info_.GetPassword(), CAtlString("p\xc3\xa4ss:word"));
    EXPECT_EQ(Contents(), "through the proxy");
}

TEST_F(ProxyTransfer, SendsKnownCredentialsWithoutAsking) {
    Serve({basic_, body_});
    info_.SetCredentials("user", "word");
    EXPECT_EQ(FetchThroughProxy(), RESULT_OK);
    EXPECT_THAT(SentCredentials(), ElementsAre("", "Basic dXNlcjp3b3Jk"));
}

TEST_F(ProxyTransfer, AsksAgainWhileTheProxyRefuses) {
    Serve({basic_, basic_, basic_, body_});
    AnswerWith("user", "word");
    EXPECT_EQ(FetchThroughProxy(), RESULT_OK);
    EXPECT_EQ(questions_, 3);
    EXPECT_EQ(server_.RequestCount(), 4U);
}

TEST_F(ProxyTransfer, NeverSendsThePasswordReadablyWhenDigestIsOffered) {
    LoopbackAnswer both = basic_;
    both.headers.push_back(digest_.headers.front());
    for (const LoopbackAnswer& challenge : {digest_, both}) {
        Serve({challenge, challenge, body_});
        AnswerWith("user", "word");
        info_.SetCredentials(CAtlString(), CAtlString());
        EXPECT_EQ(FetchThroughProxy(), RESULT_OK);
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
