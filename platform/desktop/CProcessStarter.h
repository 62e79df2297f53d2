// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Starts real processes.
#pragma once

#include "platform/desktop/DesktopLaunching.h"

#include <QEventLoop>
#include <vector>

// QProcess behind IProcessStarter. What a program prints while RunAndWait waits for it is dropped; a program
// that does not end within the limit is left running, for it may be a browser that the user has begun to use.
//
// An event inside RunAndWait may start another one; the outer one then returns after the inner one.
class CProcessStarter : public IProcessStarter {
public:
    bool RunAndWait(const QString& program, const QStringList& arguments, int limitMs) override;
    bool StartDetached(const QString& program, const QStringList& arguments) override;
    // Every running RunAndWait returns soon, true unless its limit has passed; its program goes on.
    void StopWaiting();

private:
    // The loops of RunAndWait, the innermost last.
    std::vector<QEventLoop*> waits_;
};
