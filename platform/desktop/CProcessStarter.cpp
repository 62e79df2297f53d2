// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/desktop/CProcessStarter.h"

#include <QProcess>
#include <QTimer>
#include <optional>

namespace {

// The destructor of QProcess ends its process, unless it believes that no process runs.
class CLeavableProcess : public QProcess {
public:
    void Leave() { setProcessState(QProcess::NotRunning); }
};

}  // namespace

bool CProcessStarter::RunAndWait(const QString& program, const QStringList& arguments, int limitMs) {
    CLeavableProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    QEventLoop wait;
    std::optional<bool> hasEnded;
    // The first answer counts: this loop may run on until one that was started inside it has ended.
    const auto answer = [&](bool ended) {
        hasEnded = hasEnded.value_or(ended);
        wait.quit();
    };
    QObject::connect(&process, &QProcess::finished, &wait, [&] { answer(true); });
    QObject::connect(&process, &QProcess::errorOccurred, &wait, [&](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            answer(false);
    });
    QTimer::singleShot(limitMs, Qt::PreciseTimer, &wait, [&] { answer(false); });
    process.start(program, arguments);
    if (!hasEnded) {
        waits_.push_back(&wait);
        wait.exec();
        waits_.pop_back();
    }
    process.Leave();
    return hasEnded.value_or(true);
}

void CProcessStarter::StopWaiting() {
    for (QEventLoop* wait : waits_)
        wait->quit();
}

bool CProcessStarter::StartDetached(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    return process.startDetached();
}
