// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "support/LoopbackServer.h"

#include <algorithm>
#include <boost/algorithm/string.hpp>
#include <boost/asio.hpp>
#include <sstream>

namespace asio = boost::asio;
using asio::use_awaitable;
using asio::ip::tcp;

namespace {

LoopbackRequest Parse(const std::string& head) {
    std::istringstream lines(head);
    LoopbackRequest request;
    std::string name;
    std::string value;
    lines >> request.method >> request.target;
    std::getline(lines, value);
    while (std::getline(lines, name, ':') && std::getline(lines, value))
        request.headers[boost::to_lower_copy(name)] = boost::trim_copy(value);
    return request;
}

std::string Render(const LoopbackAnswer& answer) {
    if (answer.isRaw)
        return answer.body;
    std::ostringstream text;
    text << "HTTP/1.1 " << answer.status << " Scripted\r\nConnection: close\r\n";
    if (answer.announcedLength >= 0)
        text << "Content-Length: " << answer.announcedLength << "\r\n";
    else if (answer.status != 204)
        text << "Content-Length: " << answer.body.size() << "\r\n";
    for (const std::string& header : answer.headers)
        text << header << "\r\n";
    text << "\r\n" << answer.body;
    return text.str();
}

}  // namespace

LoopbackServer::LoopbackServer() : acceptor_(events_, {asio::ip::address_v4::loopback(), 0}) {
    asio::co_spawn(events_, Accept(), asio::detached);
    thread_ = std::thread([this] { events_.run(); });
}

LoopbackServer::~LoopbackServer() {
    events_.stop();
    thread_.join();
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

asio::awaitable<void> LoopbackServer::Accept() {
    for (;;)
        asio::co_spawn(events_, Converse(co_await acceptor_.async_accept(use_awaitable)), asio::detached);
}

// Ends with an exception, which nobody is told of, when the client goes away.
asio::awaitable<void> LoopbackServer::Converse(tcp::socket connection) {
    std::string head;
    co_await asio::async_read_until(connection, asio::dynamic_buffer(head), "\r\n\r\n", use_awaitable);
    const LoopbackAnswer answer = NextAnswer(Parse(head));
    asio::steady_timer timer(events_, answer.delay);
    co_await timer.async_wait(use_awaitable);
    {
        const std::lock_guard lock(mutex_);
        --atOnce_;
    }
    const std::string text = Render(answer);
    const std::size_t step = answer.pause.count() > 0 ? 1 : text.size();
    for (std::size_t sent = 0; sent < text.size(); sent += step) {
        co_await asio::async_write(connection, asio::buffer(text.data() + sent, step), use_awaitable);
        timer.expires_after(answer.pause);
        co_await timer.async_wait(use_awaitable);
    }
    if (answer.holdOpen)
        co_await connection.async_wait(tcp::socket::wait_read, use_awaitable);
}

LoopbackAnswer LoopbackServer::NextAnswer(const LoopbackRequest& request) {
    const std::lock_guard lock(mutex_);
    requests_.push_back(request);
    mostAtOnce_ = std::max(mostAtOnce_, ++atOnce_);
    const auto found = answers_.contains(request.target) ? answers_.find(request.target) : answers_.find(ANY);
    if (found == answers_.end() || found->second.empty())
        return LoopbackAnswer::Status(404);
    LoopbackAnswer answer = found->second.front();
    if (found->second.size() > 1)
        found->second.erase(found->second.begin());
    return answer;
}
