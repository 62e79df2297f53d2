// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// How a second start brings the windows of the running copy to the front.
#pragma once

#include <QLocalServer>
#include <QString>
#include <QTimer>
#include <boost/function.hpp>

// Listens on a local socket in the user's runtime directory (XDG_RUNTIME_DIR, see pam_systemd(8)), under a
// name made from the executable's device and inode, as the key of the single-instance lock is. It does not
// listen when that directory is missing or others could change it. Only the holder of that lock may create
// one. GUI thread only.
class CActivationServer {
public:
    // How long after its construction it begins to listen, in milliseconds: the window comes first.
    static constexpr int LISTENS_AFTER = 250;

    // executable is a path. activate is called, while events are served, for each connection of a process of
    // the same user.
    CActivationServer(const QString& executable, const boost::function<void()>& activate);

private:
    void Listen(const QString& socket);
    void Accept();

    boost::function<void()> activate_;
    QLocalServer server_;
    QTimer start_;
};

// Asks the copy that runs from this executable, if it is the same user's, to come to the front. Waits for at
// most a second. False when no copy listens. GUI thread, while a QCoreApplication exists.
bool ActivateRunningCopy(const QString& executable);
