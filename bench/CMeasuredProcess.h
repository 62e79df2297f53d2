// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A program under measurement.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include <sys/types.h>

// What a program uses from its start to its end.
struct Usage {
    double wallMs = 0;
    double processorMs = 0;
    double peakMiB = 0;
};

// The constructor starts a program with its standard output in a pipe, and the destructor kills it if it
// still runs. Wait throws std::runtime_error when the program could not start or has failed.
class CMeasuredProcess {
public:
    // The program runs in the network namespace of that descriptor; with HERE, in this process's own.
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
    // Waits for output and appends it to text; false at the end of the output.
    bool Read(std::string& text) const;
    // Reads the output to its end, waits for the program to end, and returns what it used.
    Usage Wait();
    // The last line of the output, after Wait.
    const std::string& LastLine() const { return lastLine_; }

    // Starts a program, and waits for it.
    static Usage Run(const std::vector<std::string>& command, int network = HERE) {
        return CMeasuredProcess(command, network).Wait();
    }

private:
    std::chrono::steady_clock::time_point start_;
    pid_t id_ = -1;
    int output_ = -1;
    std::string lastLine_;
};
