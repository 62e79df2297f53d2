// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/CProcessStarter.h"

#include <QProcess>

namespace {

// QProcess ends its process when it is destroyed, unless it believes that there is none.
class LeavableProcess : public QProcess {
public:
    void Leave() { setProcessState(QProcess::NotRunning); }
};

}  // namespace

bool CProcessStarter::RunAndWait(const QString& program, const QStringList& arguments, int limitMs) {
    LeavableProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
    const bool finished = process.waitForFinished(limitMs);
    process.Leave();
    return finished;
}

bool CProcessStarter::StartDetached(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    return process.startDetached();
}
