// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Hosts with several addresses, not all of which answer.
#include <gtest/gtest.h>
#include <QElapsedTimer>
#include <QTcpServer>

#include "net/CPeerMemory.h"
#include "net/HostConnection.h"
#include "net/events/WaitWithQtEvents.h"

namespace {

// Lets nobody in who comes after the first two, and does not turn them away either: their requests for a
// connection are dropped.
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

    // Where the connection leads, or the error, within a second.
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
    const struct {
        const char* situation;
        QStringList addresses;
        QString expected;
        qint64 atLeast, atMost;  // milliseconds
    } rows[] = {
        {"behind two that refuse", {"127.0.0.3", "127.0.0.4", "127.0.0.1"}, "127.0.0.1", 0, 200},
        {"behind a silent one", {SilentServer::ADDRESS, "127.0.0.1", "127.0.0.3"}, "127.0.0.1", 250, 1000},
        {"a silent one before one that refuses",
         {SilentServer::ADDRESS, "127.0.0.3"},
         "nothing yet",
         1000,
         2000},
        {"none", {"127.0.0.3", "127.0.0.4"}, "Connection refused", 0, 200},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.situation);
        EXPECT_EQ(PeerOf(Addresses(row.addresses)), row.expected);
        EXPECT_GE(timer_.elapsed(), row.atLeast);
        EXPECT_LE(timer_.elapsed(), row.atMost);
    }
}

TEST(HostAddresses, AreLookedUpAndTakeTurns) {
    CPeerMemory memory;
    EXPECT_TRUE(memory.AddressesOf("localhost").result().contains(QHostAddress(QHostAddress::LocalHost)));
    EXPECT_TRUE(memory.AddressesOf("").result().isEmpty());
    const std::pair<QStringList, QStringList> rows[] = {
        {{}, {}},
        {{"::1", "::2", "::3", "0.0.0.1", "0.0.0.2"}, {"::1", "0.0.0.1", "::2", "0.0.0.2", "::3"}},
        {{"0.0.0.2", "0.0.0.1", "::1"}, {"0.0.0.2", "::1", "0.0.0.1"}},
    };
    for (const auto& [resolved, tried] : rows)
        EXPECT_EQ(InTurns(Addresses(resolved)), Addresses(tried));
}

}  // namespace
