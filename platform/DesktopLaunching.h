// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Opening a web address in the user's browser.
#pragma once

#include "platform/CAtlString.h"

#include <QString>
#include <QStringList>

// How other programs are started; replaced in tests. GUI thread only.
class IProcessStarter {
public:
    virtual ~IProcessStarter() = default;
    // Starts a program and waits for its end, for at most limitMs milliseconds; true when it ended in that
    // time, whatever its exit code. Blocks without serving events.
    virtual bool RunAndWait(const QString& program, const QStringList& arguments, int limitMs) = 0;
    // Starts a program that outlives this one; false when it could not be started.
    virtual bool StartDetached(const QString& program, const QStringList& arguments) = 0;
};
