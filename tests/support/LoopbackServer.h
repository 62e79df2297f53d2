// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A scriptable HTTP server inside the test process; asked for a host that no resolver knows, it is a proxy.
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

// What the server sends. The header fields are complete lines without their end.
struct LoopbackAnswer {
    int status = 200;
    std::string body{};
    std::vector<std::string> headers{};
    // Before the first byte.
    std::chrono::milliseconds delay{0};
    // After each byte; 0 sends all at once.
    std::chrono::milliseconds pause{0};
    // The "Content-Length" sent; -1 for the body's. Behind a shorter body the connection ends.
    long announcedLength = -1;
    // Whether the bytes of body are all that is sent, without a head; then the connection ends.
    bool isRaw = false;
    // Keeps the connection open all the same.
    bool holdOpen = false;

    static LoopbackAnswer Status(int status, const std::string& body = "body of an answer") {
        return {.status = status, .body = body};
    }
    static LoopbackAnswer Body(const std::string& body) { return {.body = body}; }
    static LoopbackAnswer Raw(const std::string& bytes) { return {.body = bytes, .isRaw = true}; }
    // 407 with a challenge, such as "Basic realm=\"test\"".
    static LoopbackAnswer Challenge(const std::string& challenge) {
        return {.status = 407, .body = "credentials", .headers = {"Proxy-Authenticate: " + challenge}};
    }
    // Accepts the request and never answers.
    static LoopbackAnswer Silence() { return {.isRaw = true, .holdOpen = true}; }
};

struct LoopbackRequest {
    std::string method;
    // As in the request line: a path, or a whole address when the server is used as a proxy.
    std::string target;
    // Names in lower case.
    std::map<std::string, std::string> headers;
};

// Listens on 127.0.0.1 from its construction on; the system chooses the port. Its thread ends in the
// destructor. All functions may be called from any thread.
class LoopbackServer {
public:
    LoopbackServer();
    ~LoopbackServer();

    int Port() const { return port_; }
    // "http://127.0.0.1:<port>" and the path.
    QString Address(const std::string& path) const;

    // Answers requests for a target, one after the other; the last answer is for all later ones. A target
    // without answers gets those of ANY, else 404.
    void Serve(const std::string& target, std::vector<LoopbackAnswer> answers);
    void Serve(const std::string& target, const LoopbackAnswer& answer) { Serve(target, {{answer}}); }
    static constexpr const char* ANY = "*";

    // What was asked so far, in the order of arrival.
    std::vector<LoopbackRequest> Requests() const;
    std::size_t RequestCount() const { return Requests().size(); }
    std::vector<std::string> Targets() const;
    // The most requests that were waiting for their answer at the same time.
    int MostAtOnce() const;
    // How many there have been.
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
