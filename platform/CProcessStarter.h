// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Starts real processes.
#pragma once

#include "platform/IProcessStarter.h"

// QProcess behind IProcessStarter. What a program prints while RunAndWait waits for it is dropped; a program
// that does not end within the limit is left running, for it may be a browser that the user has begun to use.
class CProcessStarter : public IProcessStarter {
public:
    bool RunAndWait(const QString& program, const QStringList& arguments, int limitMs) override;
    bool StartDetached(const QString& program, const QStringList& arguments) override;
};
