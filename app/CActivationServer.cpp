// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/CActivationServer.h"

#include "platform/files/CTemporaryFolder.h"
#include "platform/files/FileSystem.h"

#include <QLocalSocket>
#include <memory>

#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int LONGEST_WAIT_MS = 1000;

// Empty when there is no place for the socket.
QString SocketOf(const QString& executable) {
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    struct stat file {};
    if (!folder.startsWith('/') || !CTemporaryFolder::IsSafe(CVardoDirectoryPath(CAtlString(folder))) ||
        stat(FileSystem::SystemPath(CAtlString(executable)).c_str(), &file) != 0)
        return {};
    return QString("%1/VARDOProductUpdate-%2-%3")
        .arg(folder, QString::number(file.st_dev), QString::number(file.st_ino));
}

// unix(7), SO_PEERCRED: as the kernel saw it when the peer connected.
bool IsOfSameUser(const QLocalSocket& peer) {
    ucred credentials{};
    socklen_t size = sizeof credentials;
    const auto socket = static_cast<int>(peer.socketDescriptor());
    return getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &credentials, &size) == 0 &&
           credentials.uid == geteuid();
}

}  // namespace

CActivationServer::CActivationServer(const QString& executable, const boost::function<void()>& activate)
    : activate_(activate) {
    QObject::connect(&server_, &QLocalServer::newConnection, [this] { Accept(); });
    QObject::connect(&start_, &QTimer::timeout, [this, executable] { Listen(SocketOf(executable)); });
    start_.setSingleShot(true);
    start_.start(LISTENS_AFTER);
}

void CActivationServer::Listen(const QString& socket) {
    if (socket.isEmpty())
        return;
    // Removes the socket that a killed copy left.
    QLocalServer::removeServer(socket);
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    server_.listen(socket);
}

void CActivationServer::Accept() {
    while (const std::unique_ptr<QLocalSocket> peer{server_.nextPendingConnection()})
        if (IsOfSameUser(*peer))
            activate_();
}

bool ActivateRunningCopy(const QString& executable) {
    const QString name = SocketOf(executable);
    if (name.isEmpty())
        return false;
    QLocalSocket socket;
    socket.connectToServer(name);
    return socket.waitForConnected(LONGEST_WAIT_MS);
}
