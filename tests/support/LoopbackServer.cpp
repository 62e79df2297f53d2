// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "support/LoopbackServer.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <sstream>
#include <stdexcept>

#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr std::chrono::milliseconds PATIENCE{60'000};

int Listen(int& port) {
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof(address);
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    if (listener < 0 || bind(listener, generic, size) != 0 || listen(listener, SOMAXCONN) != 0 ||
        getsockname(listener, generic, &size) != 0)
        throw std::runtime_error("the loopback server cannot listen");
    port = ntohs(address.sin_port);
    return listener;
}

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char ch) { return static_cast<char>(std::tolower(ch)); });
    return text;
}

LoopbackRequest ParseHead(const std::string& head) {
    std::istringstream lines(head);
    LoopbackRequest request;
    std::string line;
    lines >> request.method >> request.target;
    std::getline(lines, line);
    while (std::getline(lines, line) && line != "\r") {
        const auto colon = line.find(": ");
        if (colon != std::string::npos)
            request.headers[Lower(line.substr(0, colon))] =
                line.substr(colon + 2, line.find('\r') - colon - 2);
    }
    return request;
}

std::string Render(const LoopbackAnswer& answer) {
    if (answer.isRaw)
        return answer.body;
    const long length =
        answer.announcedLength < 0 ? static_cast<long>(answer.body.size()) : answer.announcedLength;
    std::ostringstream text;
    text << "HTTP/1.1 " << answer.status << " Scripted\r\nConnection: close\r\n";
    if (answer.status != 204)
        text << "Content-Length: " << length << "\r\n";
    for (const std::string& header : answer.headers)
        text << header << "\r\n";
    text << "\r\n" << answer.body;
    return text.str();
}

}  // namespace

LoopbackAnswer LoopbackAnswer::Status(int status, const std::string& body) {
    LoopbackAnswer answer;
    answer.status = status;
    answer.body = body;
    return answer;
}

LoopbackAnswer LoopbackAnswer::Body(const std::string& body) {
    return Status(200, body);
}

LoopbackAnswer LoopbackAnswer::Challenge(const std::string& challenge) {
    LoopbackAnswer answer = Status(407, "credentials, please");
    answer.headers = {"Proxy-Authenticate: " + challenge};
    return answer;
}

LoopbackAnswer LoopbackAnswer::Silence() {
    LoopbackAnswer answer;
    answer.isRaw = true;
    answer.holdOpen = true;
    return answer;
}

LoopbackServer::LoopbackServer() : listener_(Listen(port_)), stop_(eventfd(0, EFD_CLOEXEC)) {
    acceptor_ = std::thread([this] { Accept(); });
}

LoopbackServer::~LoopbackServer() {
    const std::uint64_t one = 1;
    if (write(stop_, &one, sizeof(one)) != sizeof(one))
        std::terminate();
    acceptor_.join();
    for (std::thread& conversation : conversations_)
        conversation.join();
    close(listener_);
    close(stop_);
}

QString LoopbackServer::Address(const std::string& path) const {
    return QStringLiteral("http://127.0.0.1:%1").arg(port_) + QString::fromStdString(path);
}

void LoopbackServer::Serve(const std::string& target, std::vector<LoopbackAnswer> answers) {
    const std::lock_guard lock(mutex_);
    answers_[target] = std::move(answers);
}

std::vector<LoopbackRequest> LoopbackServer::Requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

std::vector<std::string> LoopbackServer::Targets() const {
    std::vector<std::string> targets;
    for (const LoopbackRequest& request : Requests())
        targets.push_back(request.target);
    return targets;
}

int LoopbackServer::MostAtOnce() const {
    const std::lock_guard lock(mutex_);
    return mostAtOnce_;
}

// Only the acceptor touches conversations_, until it has ended.
void LoopbackServer::Accept() {
    while (WaitReadable(listener_, std::chrono::milliseconds(-1))) {
        const int connection = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        if (connection >= 0)
            conversations_.emplace_back([this, connection] { Converse(connection); });
    }
}

void LoopbackServer::Converse(int connection) {
    std::string head;
    if (ReadHead(connection, head)) {
        Send(connection, NextAnswer(ParseHead(head)));
        const std::lock_guard lock(mutex_);
        --atOnce_;
    }
    close(connection);
}

LoopbackAnswer LoopbackServer::NextAnswer(const LoopbackRequest& request) {
    const std::lock_guard lock(mutex_);
    requests_.push_back(request);
    mostAtOnce_ = std::max(mostAtOnce_, ++atOnce_);
    auto found = answers_.find(request.target);
    if (found == answers_.end())
        found = answers_.find(ANY);
    if (found == answers_.end() || found->second.empty())
        return LoopbackAnswer::Status(404);
    LoopbackAnswer answer = found->second.front();
    if (found->second.size() > 1)
        found->second.erase(found->second.begin());
    return answer;
}

bool LoopbackServer::WaitReadable(int descriptor, std::chrono::milliseconds limit) const {
    pollfd waits[] = {{descriptor, POLLIN, 0}, {stop_, POLLIN, 0}};
    return poll(waits, 2, static_cast<int>(limit.count())) > 0 && waits[1].revents == 0;
}

bool LoopbackServer::ReadHead(int connection, std::string& head) const {
    char buffer[4096];
    while (head.find("\r\n\r\n") == std::string::npos) {
        if (!WaitReadable(connection, PATIENCE))
            return false;
        const ssize_t count = recv(connection, buffer, sizeof(buffer), 0);
        if (count <= 0)
            return false;
        head.append(buffer, static_cast<std::size_t>(count));
    }
    return true;
}

void LoopbackServer::Send(int connection, const LoopbackAnswer& answer) const {
    if (answer.delay.count() > 0 && WaitReadable(connection, answer.delay))
        return;
    const std::string text = Render(answer);
    std::size_t sent = 0;
    while (sent < text.size()) {
        const std::size_t size = answer.pause.count() > 0 ? 1 : text.size() - sent;
        const ssize_t count = send(connection, text.data() + sent, size, MSG_NOSIGNAL);
        if (count <= 0 || (answer.pause.count() > 0 && WaitReadable(connection, answer.pause)))
            return;
        sent += static_cast<std::size_t>(count);
    }
    if (answer.holdOpen)
        WaitReadable(connection, PATIENCE);
}
