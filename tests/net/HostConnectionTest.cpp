// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Hosts with several addresses, not all of which answer.
#include <gtest/gtest.h>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTcpServer>

#include "net/CHostConnection.h"

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

    // Where the connection leads that open begins, or the error, within a second.
    template <typename Open>
    QString PeerOf(const Open& open) {
        CHostConnection connection;
        QSignalSpy opened(&connection, &CHostConnection::Opened);
        QSignalSpy failed(&connection, &CHostConnection::Failed);
        timer_.start();
        open(connection);
        while (opened.isEmpty() && failed.isEmpty() && timer_.elapsed() < 1000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 100);
        // Whatever the others still report.
        QCoreApplication::processEvents();
        EXPECT_LE(opened.size() + failed.size(), 1);
        if (!opened.isEmpty())
            return connection.Socket().peerAddress().toString();
        return failed.isEmpty() ? "nothing yet" : failed.value(0).value(0).toString();
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
        qint64 atLeast, atMost;  // milliseconds; the timer is a coarse one
    } rows[] = {
        {"the only one", {"127.0.0.1"}, "127.0.0.1", 0, 200},
        {"behind two that refuse", {"127.0.0.3", "127.0.0.4", "127.0.0.1"}, "127.0.0.1", 0, 200},
        {"behind a silent one", {SilentServer::ADDRESS, "127.0.0.1"}, "127.0.0.1", 200, 1000},
        {"between a silent one and another",
         {SilentServer::ADDRESS, "127.0.0.1", "127.0.0.3"},
         "127.0.0.1",
         200,
         1000},
        {"a silent one before one that refuses",
         {SilentServer::ADDRESS, "127.0.0.3"},
         "nothing yet",
         1000,
         2000},
        {"none", {"127.0.0.3", "127.0.0.4"}, "Connection refused", 0, 200},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.situation);
        const auto open = [&](CHostConnection& connection) {
            connection.OpenAny(Addresses(row.addresses), server_.serverPort());
        };
        EXPECT_EQ(PeerOf(open), row.expected);
        EXPECT_GE(timer_.elapsed(), row.atLeast);
        EXPECT_LE(timer_.elapsed(), row.atMost);
    }
}

// Perhaps behind an IPv6 address on which nobody listens.
TEST_F(HostConnection, FindsAHostByItsName) {
    for (const auto& [host, expected] : {std::pair("localhost", "127.0.0.1"), {"", "Host not found"}}) {
        const auto open = [&, name = QString(host)](CHostConnection& connection) {
            connection.Open(name, server_.serverPort());
        };
        EXPECT_EQ(PeerOf(open), expected);
    }
}

TEST(HostAddresses, TakeTurns) {
    const std::pair<QStringList, QStringList> rows[] = {
        {{}, {}},
        {{"::1"}, {"::1"}},
        {{"::1", "::2", "::3", "0.0.0.1", "0.0.0.2"}, {"::1", "0.0.0.1", "::2", "0.0.0.2", "::3"}},
        {{"0.0.0.1", "0.0.0.2", "::1"}, {"0.0.0.1", "::1", "0.0.0.2"}},
        {{"0.0.0.2", "0.0.0.1"}, {"0.0.0.2", "0.0.0.1"}},
    };
    for (const auto& [resolved, tried] : rows)
        EXPECT_EQ(CHostConnection::InTurns(Addresses(resolved)), Addresses(tried));
}

}  // namespace
