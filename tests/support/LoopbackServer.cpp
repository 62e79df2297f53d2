// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "support/LoopbackServer.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <algorithm>
#include <boost/algorithm/string.hpp>
#include <memory>
#include <sstream>

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

bool IsCutOff(const LoopbackAnswer& answer) {
    return answer.isRaw || answer.announcedLength > static_cast<long>(answer.body.size());
}

QByteArray Render(const LoopbackAnswer& answer) {
    if (answer.isRaw)
        return QByteArray::fromStdString(answer.body);
    std::ostringstream text;
    text << "HTTP/1.1 " << answer.status << " Scripted\r\n";
    if (answer.announcedLength >= 0)
        text << "Content-Length: " << answer.announcedLength << "\r\n";
    else if (answer.status != 204)
        text << "Content-Length: " << answer.body.size() << "\r\n";
    for (const std::string& header : answer.headers)
        text << header << "\r\n";
    text << "\r\n" << answer.body;
    return QByteArray::fromStdString(text.str());
}

}  // namespace

LoopbackServer::LoopbackServer() {
    auto* const server = new QTcpServer;
    server->listen(QHostAddress::LocalHost);
    port_ = server->serverPort();
    server->moveToThread(&thread_);
    QObject::connect(&thread_, &QThread::finished, server, &QObject::deleteLater);
    QObject::connect(server, &QTcpServer::newConnection, server, [this, server] {
        QTcpSocket* const connection = server->nextPendingConnection();
        QObject::connect(connection, &QTcpSocket::readyRead, connection,
                         [this, connection] { OnData(*connection); });
        const std::lock_guard lock(mutex_);
        ++connections_;
    });
    thread_.start();
    // A thread reads the environment while it starts, and a test may change that next.
    QMetaObject::invokeMethod(server, &QTcpServer::resumeAccepting, Qt::BlockingQueuedConnection);
}

LoopbackServer::~LoopbackServer() {
    thread_.quit();
    thread_.wait();
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

int LoopbackServer::Connections() const {
    const std::lock_guard lock(mutex_);
    return connections_;
}

void LoopbackServer::OnData(QTcpSocket& connection) {
    const qsizetype end = connection.peek(connection.bytesAvailable()).indexOf("\r\n\r\n");
    if (end < 0)
        return;
    const LoopbackAnswer answer = NextAnswer(Parse(connection.read(end + 4).toStdString()));
    QTimer::singleShot(answer.delay, &connection, [this, &connection, answer] { Send(connection, answer); });
}

void LoopbackServer::Send(QTcpSocket& connection, const LoopbackAnswer& answer) {
    {
        const std::lock_guard lock(mutex_);
        --atOnce_;
    }
    const auto text = std::make_shared<QByteArray>(Render(answer));
    const qsizetype step = answer.pause.count() > 0 ? 1 : text->size();
    const bool closes = IsCutOff(answer) && !answer.holdOpen;
    auto* const timer = new QTimer(&connection);
    timer->setTimerType(Qt::PreciseTimer);
    timer->start(answer.pause);
    QObject::connect(timer, &QTimer::timeout, &connection, [=, &connection] {
        connection.write(text->left(step));
        text->remove(0, step);
        if (!text->isEmpty())
            return;
        timer->deleteLater();
        if (closes)
            connection.disconnectFromHost();
    });
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
