// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A scriptable HTTP server inside the test process. As a proxy, it answers for hosts that no resolver knows.
#pragma once

#include <QString>
#include <QThread>
#include <chrono>
#include <map>
#include <mutex>
#include <string>
#include <vector>

class QTcpServer;
class QTcpSocket;

// What the server sends. Each of the headers is a whole line without its end.
struct LoopbackAnswer {
    int status = 200;
    std::string body{};
    std::vector<std::string> headers{};
    // The time before it begins to send.
    std::chrono::milliseconds delay{0};
    // The time before each byte; with 0, all bytes go at once.
    std::chrono::milliseconds pause{0};
    // The "Content-Length"; -1 stands for the body's. After a shorter body, the connection ends.
    long announcedLength = -1;
    // Sends the body alone, without a head; then the connection ends.
    bool isRaw = false;
    // Keeps the connection open in both of these cases.
    bool holdOpen = false;

    static LoopbackAnswer Status(int status, const std::string& body = "body of an answer") {
        return {.status = status, .body = body};
    }
    static LoopbackAnswer Body(const std::string& body) { return {.body = body}; }
    static LoopbackAnswer Raw(const std::string& bytes) { return {.body = bytes, .isRaw = true}; }
    // A 407 with a challenge, such as "Basic realm=\"test\"".
    static LoopbackAnswer Challenge(const std::string& challenge) {
        return {.status = 407, .body = "credentials", .headers = {"Proxy-Authenticate: " + challenge}};
    }
    // Accepts the request and never answers.
    static LoopbackAnswer Silence() { return {.isRaw = true, .holdOpen = true}; }
};

struct LoopbackRequest {
    std::string method;
    // The target in the request line: a path, or a whole address when the server is used as a proxy.
    std::string target;
    // The names are in lower case.
    std::map<std::string, std::string> headers;
};

// Listens on 127.0.0.1 from its construction on; the system chooses the port. The destructor ends its thread.
// Any thread may call its functions.
class LoopbackServer {
public:
    LoopbackServer();
    ~LoopbackServer();

    int Port() const { return port_; }
    // "http://127.0.0.1:<port>" and the path.
    QString Address(const std::string& path) const;

    // Sets the answers to the requests for a target, in order; the last one also answers all later requests.
    // A target without answers gets those of ANY, else 404.
    void Serve(const std::string& target, std::vector<LoopbackAnswer> answers);
    void Serve(const std::string& target, const LoopbackAnswer& answer) { Serve(target, {{answer}}); }
    static constexpr const char* ANY = "*";

    // The requests so far, in the order of arrival.
    std::vector<LoopbackRequest> Requests() const;
    std::size_t RequestCount() const { return Requests().size(); }
    std::vector<std::string> Targets() const;
    // The most requests that were waiting for their answer at the same time.
    int MostAtOnce() const;
    // The number of connections so far.
    int Connections() const;

private:
    void OnData(QTcpSocket& connection);
    void Send(QTcpSocket& connection, const LoopbackAnswer& answer);
    LoopbackAnswer NextAnswer(const LoopbackRequest& request);

    mutable std::mutex mutex_;
    std::map<std::string, std::vector<LoopbackAnswer>> answers_;
    std::vector<LoopbackRequest> requests_;
    int atOnce_ = 0;
    int mostAtOnce_ = 0;
    int connections_ = 0;
    int port_ = 0;
    QThread thread_;
};
