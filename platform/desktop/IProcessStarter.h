// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// How other programs are started, behind a door that tests can replace.
#pragma once

#include <QString>
#include <QStringList>

// Starts programs without a shell: each argument arrives as it is. GUI thread only.
class IProcessStarter {
public:
    virtual ~IProcessStarter() = default;
    // Starts a program and waits for its end, for at most limitMs milliseconds, while events are served; true
    // when it ended in that time, whatever its exit code.
    virtual bool RunAndWait(const QString& program, const QStringList& arguments, int limitMs) = 0;
    // Starts a program that outlives this one; false when it could not be started.
    virtual bool StartDetached(const QString& program, const QStringList& arguments) = 0;
};
