// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "support/ChildProcess.h"

#include <csignal>
#include <stdexcept>
#include <thread>

#include <sys/prctl.h>
#include <unistd.h>

namespace {

// How long a program may take to end when it is asked to.
constexpr std::chrono::seconds POLITE_END{5};
constexpr std::chrono::milliseconds POLL_INTERVAL{10};

QStringList ToList(const std::vector<std::string>& texts) {
    QStringList list;
    for (const std::string& text : texts)
        list << QString::fromStdString(text);
    return list;
}

}  // namespace

bool WaitUntil(const std::function<bool()>& condition, std::chrono::seconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(POLL_INTERVAL);
    }
    return true;
}

ChildProcess::ChildProcess(const std::string& program, const std::vector<std::string>& arguments,
                           const Environment& environment) {
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (const auto& [name, value] : environment) {
        if (value.empty())
            variables.remove(QString::fromStdString(name));
        else
            variables.insert(QString::fromStdString(name), QString::fromStdString(value));
    }
    process_.setProcessEnvironment(variables);
    process_.setStandardInputFile(QProcess::nullDevice());
    process_.setStandardOutputFile(QString::fromStdString(files_.Path("output")));
    process_.setStandardErrorFile(QString::fromStdString(files_.Path("errors")));
    process_.setChildProcessModifier([] {
        setsid();
        prctl(PR_SET_PDEATHSIG, SIGKILL);
    });
    process_.start(QString::fromStdString(program), ToList(arguments));
    if (!process_.waitForStarted())
        throw std::runtime_error("cannot start " + program);
    id_ = process_.processId();
}

ChildProcess::~ChildProcess() {
    Signal(SIGTERM);
    WaitForEnd(POLITE_END);
    Signal(SIGKILL);
    WaitForEnd();
}

bool ChildProcess::IsRunning() {
    return process_.state() != QProcess::NotRunning && !process_.waitForFinished(0);
}

bool ChildProcess::WaitForEnd(std::chrono::seconds limit) {
    return WaitUntil([this] { return !IsRunning(); }, limit);
}

int ChildProcess::ExitCode() const {
    return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}

void ChildProcess::Signal(int number) const {
    kill(static_cast<pid_t>(-id_), number);
}
