// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A program under measurement.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include <sys/types.h>

// What a program has used from its start to its end.
struct Usage {
    double wallMs = 0;
    double processorMs = 0;
    double peakMiB = 0;
};

// Starts a program in its constructor, with its standard output in a pipe, and ends it in the destructor if
// it is still there then. A program that cannot be started, or that fails, ends the measurement with an
// exception.
class CMeasuredProcess {
public:
    // The program runs in the network namespace of that descriptor; with HERE in this process's own.
    explicit CMeasuredProcess(const std::vector<std::string>& command, int network = HERE);
    ~CMeasuredProcess();
    CMeasuredProcess(const CMeasuredProcess&) = delete;
    CMeasuredProcess& operator=(const CMeasuredProcess&) = delete;

    static constexpr int HERE = -1;

    pid_t Id() const { return id_; }
    // Milliseconds since the start.
    double Elapsed() const;
    // The descriptor of its standard output.
    int Output() const { return output_; }
    // What has arrived of its output; false at the end of the output.
    bool Read(std::string& text) const;
    // Reads the output to its end, and waits for the program's.
    Usage Wait();
    // The last line of the output, after Wait.
    const std::string& LastLine() const { return lastLine_; }

    // The three in one.
    static Usage Run(const std::vector<std::string>& command, int network = HERE) {
        return CMeasuredProcess(command, network).Wait();
    }

private:
    std::chrono::steady_clock::time_point start_;
    pid_t id_ = -1;
    int output_ = -1;
    std::string lastLine_;
};
