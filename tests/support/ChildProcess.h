// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Another program (a server, a proxy, the program itself) for the length of a scope.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <QProcess>

#include "support/TemporaryTree.h"

// Polls the condition every few milliseconds until it holds; false when it does not within the limit.
bool WaitUntil(const std::function<bool()>& condition, std::chrono::seconds limit = std::chrono::seconds(30));

// Runs a program in a process group of its own. The destructor ends the whole group, first politely; it also
// ends when the test program dies. Use it from the thread that made it.
class ChildProcess {
public:
    // Added to the environment of the test program; an empty value removes the variable.
    using Environment = std::map<std::string, std::string>;

    // Starts the program (a path, or a name on the PATH); throws std::runtime_error when that fails.
    ChildProcess(const std::string& program, const std::vector<std::string>& arguments,
                 const Environment& environment = {});
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    qint64 Id() const { return id_; }
    bool IsRunning();
    // False when it still runs after the limit.
    bool WaitForEnd(std::chrono::seconds limit = std::chrono::seconds(30));
    // The exit code of a program that has ended; -1 when a signal ended it.
    int ExitCode() const;
    // Sends the signal to the whole group.
    void Signal(int number) const;
    // What it wrote so far to standard output and to standard error.
    std::string Output() const { return ReadWholeFile(files_.Path("output")); }
    std::string Errors() const { return ReadWholeFile(files_.Path("errors")); }

private:
    TemporaryTree files_;
    QProcess process_;
    qint64 id_ = 0;
};
