// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Runs another program (a server, a proxy, the program itself) for the length of a scope.
#pragma once

#include <QProcess>
#include <chrono>
#include <csignal>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include <sys/prctl.h>
#include <unistd.h>

#include "support/TemporaryTree.h"

// Polls the condition every few milliseconds until it holds; false when the limit passes first.
inline bool WaitUntil(const std::function<bool()>& condition,
                      std::chrono::seconds limit = std::chrono::seconds(30)) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

// Runs a program in a process group of its own. The destructor ends the whole group, with SIGTERM first. The
// system kills the program alone when the test program dies. Use it from the thread that made it.
class ChildProcess {
public:
    // Starts the program (a path, or a name on the PATH), with variables added to the environment; throws
    // std::runtime_error when that fails.
    ChildProcess(const std::string& program, const std::vector<std::string>& arguments,
                 const std::map<std::string, std::string>& variables = {}) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const auto& [name, value] : variables)
            environment.insert(QString::fromStdString(name), QString::fromStdString(value));
        process_.setProcessEnvironment(environment);
        process_.setStandardInputFile(QProcess::nullDevice());
        process_.setStandardOutputFile(QString::fromStdString(files_.Path("output")));
        process_.setStandardErrorFile(QString::fromStdString(files_.Path("errors")));
        process_.setChildProcessModifier([] {
            setsid();
            prctl(PR_SET_PDEATHSIG, SIGKILL);
        });
        QStringList texts;
        for (const std::string& argument : arguments)
            texts << QString::fromStdString(argument);
        process_.start(QString::fromStdString(program), texts);
        if (!process_.waitForStarted())
            throw std::runtime_error("cannot start " + program);
        id_ = process_.processId();
    }
    ~ChildProcess() {
        Signal(SIGTERM);
        WaitForEnd(std::chrono::seconds(5));
        Signal(SIGKILL);
        WaitForEnd();
    }

    qint64 Id() const { return id_; }
    bool IsRunning() { return process_.state() != QProcess::NotRunning && !process_.waitForFinished(0); }
    // False when it still runs after the limit.
    bool WaitForEnd(std::chrono::seconds limit = std::chrono::seconds(30)) {
        return WaitUntil([this] { return !IsRunning(); }, limit);
    }
    // Waits for its end; returns its exit code, or -1 after a signal or half a minute.
    int ExitCode() {
        return WaitForEnd() && process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
    }
    // Sends the signal to the whole group.
    void Signal(int number) const { kill(static_cast<pid_t>(-id_), number); }
    // What it has written so far to standard output and to standard error.
    std::string Output() const { return ReadWholeFile(files_.Path("output")); }
    std::string Errors() const { return ReadWholeFile(files_.Path("errors")); }

private:
    TemporaryTree files_;
    QProcess process_;
    qint64 id_ = 0;
};
