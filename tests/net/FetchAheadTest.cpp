// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The downloader fetches announced files before the program asks for them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTimer>
#include <memory>

#include "net/CFetchAhead.h"
#include "net/Downloader.h"
#include "platform/files/CVardoDirectoryPath.h"
#include "support/LoopbackServer.h"
#include "support/TextPrinting.h"

using testing::ElementsAre;
using testing::UnorderedElementsAreArray;
using namespace std::chrono_literals;

namespace {

constexpr int MOST_AT_ONCE = static_cast<int>(Downloader::MOST_AT_ONCE);

class FetchAhead : public testing::Test {
public:
    ~FetchAhead() override {
        downloader_.reset();
        EXPECT_EQ(FilesLeft(), QStringList()) << "left behind";
    }

protected:
    static std::string Target(int number) { return "/" + std::to_string(number) + ".xml"; }
    static QStringList FilesLeft() {
        return QDir(CVardoDirectoryPath::GetTempDirectory().GetDirectoryPathString().ToQString())
            .entryList(QDir::Files);
    }

    // Serves so many files, each after one to three units of time; returns their addresses.
    std::vector<CAtlString> Serve(int count, std::chrono::milliseconds unit) {
        std::vector<CAtlString> urls;
        for (int i = 0; i < count; ++i) {
            server_.Serve(Target(i), {.body = Target(i), .delay = unit * (1 + i * 7 % 3)});
            urls.emplace_back(server_.Address(Target(i)));
        }
        return urls;
    }
    // Fetches a file, deletes it and returns its contents; "-" for a failure.
    std::string Take(const CAtlString& url) {
        const CAtlString path = downloader_->Download(url);
        QFile file(path.ToQString());
        if (path.IsEmpty() || !file.open(QIODevice::ReadOnly))
            return "-";
        std::string contents = file.readAll().toStdString();
        file.remove();
        return contents;
    }
    std::vector<std::string> TakeAll(const std::vector<CAtlString>& urls) {
        downloader_->FetchAhead(urls);
        std::vector<std::string> contents;
        contents.reserve(urls.size());
        for (const CAtlString& url : urls)
            contents.push_back(Take(url));
        downloader_->FetchAhead({});
        return contents;
    }

    LoopbackServer server_;
    std::unique_ptr<Downloader> downloader_ = std::make_unique<Downloader>();
};

}  // namespace

// Each file costs one request, and each thread keeps to one connection.
TEST_F(FetchAhead, HandsOutEachFileInItsTurnAndAsksOnceForEach) {
    std::vector<CAtlString> urls = Serve(20, 10ms);
    urls.push_back(urls.back());
    server_.Serve(Target(3), LoopbackAnswer::Status(404));
    std::vector<std::string> targets;
    std::vector<std::string> contents;
    for (const int i : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 19}) {
        targets.push_back(Target(i));
        contents.push_back(i == 3 ? "-" : Target(i));
    }
    EXPECT_EQ(TakeAll(urls), contents);
    EXPECT_THAT(server_.Targets(), UnorderedElementsAreArray(targets));
    EXPECT_GT(server_.MostAtOnce(), 1);
    EXPECT_EQ(server_.Connections(), MOST_AT_ONCE);
    TakeAll(urls);
    EXPECT_EQ(server_.Connections(), 2 * MOST_AT_ONCE) << "closed in between";
}

TEST_F(FetchAhead, GoesOnWhileOneAnswerIsLateUntilEnoughLiesReady) {
    const std::vector<CAtlString> urls = Serve(60, 5ms);
    server_.Serve(Target(0), {.body = "late", .delay = 1s});
    downloader_->FetchAhead(urls);
    EXPECT_EQ(Take(urls[0]), "late");
    EXPECT_GE(server_.RequestCount(), CFetchAhead::MOST_AHEAD);
    EXPECT_LE(server_.RequestCount(), 1 + CFetchAhead::MOST_AHEAD);
    EXPECT_LE(server_.MostAtOnce(), MOST_AT_ONCE);
}

TEST_F(FetchAhead, ForgetsWhatWasPassedOverAndWhatNobodyTook) {
    const std::vector<CAtlString> urls = Serve(MOST_AT_ONCE, 1ms);
    downloader_->FetchAhead(urls);
    const CVardoFilePath first(downloader_->Download(urls[0]));
    EXPECT_EQ(first.GetFileName(), CAtlString(L"NBKTemp.xml")) << "as any other fetch names it";
    EXPECT_TRUE(first.Exists() && first.Delete());
    EXPECT_EQ(Take(urls[3]), Target(3));
    EXPECT_EQ(Take(urls[1]), Target(1)) << "passed over, and fetched now";
    EXPECT_EQ(Take(urls[4]), Target(4));
    downloader_->FetchAhead({});
    EXPECT_EQ(FilesLeft(), QStringList());
    server_.Serve("http://127.0.0.1:1/a.xml", LoopbackAnswer::Body("a"));
    downloader_->FetchAhead({L"http://127.0.0.1:1/a.xml"});
    downloader_->SetProxy(L"127.0.0.1", server_.Port());
    EXPECT_EQ(Take(L"http://127.0.0.1:1/a.xml"), "a") << "by another way than it went ahead";
}

TEST_F(FetchAhead, CancelEndsTheFetchInHandAndWhatIsAheadOfIt) {
    const CAtlString silent(server_.Address("/silent.xml"));
    const std::vector<CAtlString> passes[] = {
        {}, {silent}, std::vector<CAtlString>(std::size_t{2} * MOST_AT_ONCE, silent)};
    downloader_->SetFailureCallback([](const QString& text) { ADD_FAILURE() << text.toStdString(); });
    for (const std::vector<CAtlString>& announced : passes) {
        server_.Serve("/silent.xml", LoopbackAnswer::Silence());
        downloader_->FetchAhead(announced);
        QElapsedTimer cancelled;
        QTimer::singleShot(50, [&] {
            cancelled.start();
            downloader_->Cancel();
        });
        EXPECT_EQ(Take(silent), "-");
        EXPECT_LT(cancelled.elapsed(), 1000);
        EXPECT_EQ(FilesLeft(), QStringList());
        server_.Serve("/silent.xml", LoopbackAnswer::Body("next"));
        EXPECT_EQ(Take(silent), "next");
    }
}

// All files have failed once the time for one silence is over; the next check waits for it again.
TEST_F(FetchAhead, WaitsOncePerCheckForAServerThatIsSilent) {
    downloader_ = std::make_unique<Downloader>(TransferBounds{.silence = 300ms});
    server_.Serve(LoopbackServer::ANY, LoopbackAnswer::Silence());
    const std::vector<CAtlString> urls(500, CAtlString(server_.Address("/silent.xml")));
    QStringList told;
    downloader_->SetFailureCallback([&](const QString& text) { told << text; });
    for (const bool isThroughProxy : {false, false, true}) {
        downloader_->SetProxy(isThroughProxy ? L"127.0.0.1" : L"", server_.Port());
        const std::size_t before = server_.RequestCount();
        QElapsedTimer timer;
        timer.start();
        EXPECT_THAT(TakeAll(urls), testing::Each("-"));
        EXPECT_GE(timer.elapsed(), 290);
        EXPECT_LT(timer.elapsed(), 2000);
        EXPECT_EQ(server_.RequestCount() - before, isThroughProxy ? 1U : MOST_AT_ONCE);
        EXPECT_EQ(told.count(told.value(0)), 500);
        told.clear();
    }
}

class FetchAheadThroughProxy : public FetchAhead {
protected:
    FetchAheadThroughProxy() {
        downloader_->SetProxy(L"127.0.0.1", server_.Port());
        downloader_->SetProxyAuthRequiredCallback(
            [this](const CAtlString&, int, CAtlString& userName, CAtlString& password) {
                EXPECT_FALSE(asking_) << "two questions at once";
                asking_ = true;
                requestsBeforeQuestion_.push_back(server_.RequestCount());
                QCoreApplication::processEvents();
                userName = "user";
                password = "word";
                asking_ = false;
                return true;
            });
    }

    // Serves files at a host that no resolver knows; each holds its own path.
    std::vector<CAtlString> ServeThroughProxy(int count) {
        std::vector<CAtlString> urls;
        for (int i = 0; i < count; ++i) {
            urls.emplace_back(("http://updates.invalid" + Target(i)).c_str());
            server_.Serve("http://updates.invalid" + Target(i), {.body = Target(i), .delay = 5ms});
        }
        return urls;
    }
    void ChallengeOnce(int number) {
        server_.Serve("http://updates.invalid" + Target(number), {CHALLENGE, LoopbackAnswer::Body("late")});
    }

    const LoopbackAnswer CHALLENGE{
        .status = 407, .headers = {"Proxy-Authenticate: Basic realm=\"test\""}, .delay = 20ms};
    bool asking_ = false;
    std::vector<std::size_t> requestsBeforeQuestion_;
};

TEST_F(FetchAheadThroughProxy, LetsOneRequestGoFirst) {
    const std::vector<CAtlString> urls = ServeThroughProxy(12);
    ChallengeOnce(0);
    const std::vector<std::string> contents = TakeAll(urls);
    EXPECT_EQ(contents.front(), "late");
    EXPECT_EQ(contents.back(), Target(11));
    EXPECT_THAT(requestsBeforeQuestion_, ElementsAre(1U));
    EXPECT_EQ(server_.RequestCount(), urls.size() + 1);
    EXPECT_GT(server_.MostAtOnce(), 1) << "after the first";
    EXPECT_LE(server_.Connections(), MOST_AT_ONCE);
}

TEST_F(FetchAheadThroughProxy, TriesANewPasswordOnce) {
    const std::vector<CAtlString> urls = ServeThroughProxy(12);
    downloader_->SetProxyAuthRequiredCallback({});
    downloader_->SetCredentials("user", "wrong");
    for (int i = 1; i < 12; ++i)
        server_.Serve("http://updates.invalid" + Target(i), CHALLENGE);
    TakeAll(urls);
    std::size_t sent = 0;
    for (const LoopbackRequest& request : server_.Requests())
        sent += request.headers.count("proxy-authorization");
    EXPECT_EQ(sent, 1U);
}
