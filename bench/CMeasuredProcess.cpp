// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "CMeasuredProcess.h"

#include <csignal>
#include <stdexcept>

#include <fcntl.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

double Milliseconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
}

}  // namespace

CMeasuredProcess::CMeasuredProcess(const std::vector<std::string>& command, int network) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command)
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): what exec(3) asks for, and leaves alone.
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    start_ = std::chrono::steady_clock::now();
    id_ = fork();
    if (id_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        dup2(ends[1], STDOUT_FILENO);
        if (network == HERE || setns(network, CLONE_NEWNET) == 0)
            execvp(arguments[0], arguments.data());
        _exit(127);
    }
    close(ends[1]);
    output_ = ends[0];
}

CMeasuredProcess::~CMeasuredProcess() {
    if (id_ > 0) {
        kill(id_, SIGKILL);
        waitpid(id_, nullptr, 0);
    }
    close(output_);
}

double CMeasuredProcess::Elapsed() const {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start_).count();
}

bool CMeasuredProcess::Read(std::string& text) const {
    char buffer[4096];
    const ssize_t count = read(output_, buffer, sizeof(buffer));
    if (count > 0)
        text.append(buffer, static_cast<std::size_t>(count));
    return count > 0;
}

Usage CMeasuredProcess::Wait() {
    std::string output;
    while (Read(output))
        if (const std::size_t end = output.rfind('\n', output.size() - 2); end != std::string::npos)
            output.erase(0, end + 1);
    lastLine_ = output;
    int status = 0;
    rusage used{};
    wait4(id_, &status, 0, &used);
    id_ = -1;
    if (status != 0)
        throw std::runtime_error("a measured program failed");
    return {Elapsed(), Milliseconds(used.ru_utime) + Milliseconds(used.ru_stime),
            static_cast<double>(used.ru_maxrss) / 1024};
}
