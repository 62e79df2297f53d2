// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// One check of many products, of which every third lies on a server that is hostile or broken in another way.
#include <QDir>
#include <QElapsedTimer>

#include "net/Downloader.h"
#include "products/CProductListController.h"
#include "support/CheckFixture.h"
#include "support/LoopbackServer.h"
#include "support/Utf16Bytes.h"

using namespace std::chrono_literals;

namespace {

LoopbackAnswer Raw(const std::string& bytes) {
    return {.body = bytes, .isRaw = true};
}

// What a server can do other than to hand out a description.
std::vector<LoopbackAnswer> HostileAnswers() {
    const std::string head = "HTTP/1.1 200 OK\r\n";
    const std::string good = "<U Location='Server'><Product UpdateVersion='9.0.0.0'/></U>";
    std::string deep = "<U Location='Server'>";
    for (int level = 0; level < 10'000; ++level)
        deep += "<a>";
    std::string longHead = head;
    for (int line = 0; line < 20'000; ++line)
        longHead += "X-" + std::to_string(line) + ": " + std::string(50, 'x') + "\r\n";
    std::vector<LoopbackAnswer> answers{
        LoopbackAnswer::Silence(),
        Raw(""),
        Raw("\x16\x03\x01\x02"),
        Raw(std::string(100'000, '\0')),
        Raw("220 mail.example ESMTP\r\n"),
        Raw(head),
        Raw(longHead),
        Raw("HTTP/1.1 99999999999 OK\r\n\r\n" + good),
        Raw(head + "Content-Length: 999\r\n\r\n" + good),
        Raw(head + "Content-Length: -1\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n" + good),
        Raw(head + "Transfer-Encoding: chunked\r\n\r\nffffffffffffffff\r\n" + good),
        {.status = 302, .body = good, .headers = {"Location: http://site/0.xml"}},
        {.status = 206, .body = good},
        {.status = 401, .body = good, .headers = {"WWW-Authenticate: Basic realm=\"x\""}},
        {.status = 404, .body = good},
        {.status = 500, .body = good},
        {.body = good.substr(0, 30)},
        {.body = good.substr(0, 30), .announcedLength = 60, .holdOpen = true},
        {.body = good, .pause = 100ms},
        {.body = ""},
        {.body = "<html><body>Log in to the network of this hotel</body></html>"},
        {.body = deep},
        {.body = std::string(2 << 20, ' ') + good},
        {.body = "<U Location='Server'><Product UpdateVersion='"},
        {.body = "<U Location='Client'><Product UpdateVersion='9.0.0.0'/></U>"},
        {.body = Utf16Bytes(u"<U>")},
    };
    return answers;
}

class HostileServers : public CheckFixture {
protected:
    static constexpr int PRODUCTS = 500;

    static bool IsHostile(int number) { return number % 3 == 2; }

    LoopbackServer servers_;
    CProductListController controller_{environment_};
};

TEST_F(HostileServers, CostTheirOwnProductsAloneAndNeverTheCheck) {
    const std::vector<LoopbackAnswer> hostile = HostileAnswers();
    for (int i = 0; i < PRODUCTS; ++i) {
        const std::string key = std::to_string(i) + "x";
        AddProduct(key, {"1.0.0.0"}, "");
        const std::string good =
            "<U Location='Server'><Product UpdateVersion='2.0.0." + std::to_string(i) + "'/></U>";
        servers_.Serve("http://site/" + key + ".xml",
                       IsHostile(i) ? hostile[static_cast<std::size_t>(i / 3) % hostile.size()]
                                    : LoopbackAnswer::Body(good));
    }
    Install();
    const auto downloader =
        boost::make_shared<Downloader>(TransferBounds{.silence = 1s, .wholeTime = 2s, .bodyBytes = 1 << 20});
    downloader->SetProxy(L"127.0.0.1", servers_.Port());
    controller_.SetDownloader(downloader);
    ASSERT_TRUE(controller_.LoadProductList());
    ASSERT_TRUE(controller_.FindInstalled());

    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(controller_.CheckForUpdates());
    RecordProperty("milliseconds", static_cast<int>(timer.elapsed()));
    EXPECT_LT(timer.elapsed(), 40'000);

    const IProduct::List products = controller_.GetProducts();
    ASSERT_EQ(products.size(), static_cast<std::size_t>(PRODUCTS));
    for (int i = 0; i < PRODUCTS; ++i) {
        const IProduct& product = *products[static_cast<std::size_t>(i)];
        const std::string latest = product.GetLatestVersion(0).ToQString().toStdString();
        EXPECT_EQ(product.IsChecked(0), !IsHostile(i)) << i << ": " << latest;
        EXPECT_EQ(latest, IsHostile(i) ? "" : "2.0.0." + std::to_string(i));
    }
    std::map<std::string, int> requests;
    for (const std::string& target : servers_.Targets())
        EXPECT_EQ(++requests[target], 1) << target;
    const QDir left(CVardoDirectoryPath::GetTempDirectory().GetDirectoryPathString().ToQString());
    EXPECT_TRUE(left.isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot));
}

}  // namespace
