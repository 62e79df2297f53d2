// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "publish/CMinisignTool.h"

#include <QFile>
#include <QProcess>
#include <csignal>
#include <iostream>

#include <termios.h>
#include <unistd.h>

namespace {

// Keys with a password take seconds, and the machine may be slow.
constexpr int LONGEST_SIGNING = 120'000;  // milliseconds

constexpr int ENDS[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};

// How the terminal was before it hid what is typed.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): a signal's handler has no other way.
termios shown{};

void EndWithEcho(int signal) {
    tcsetattr(STDIN_FILENO, TCSANOW, &shown);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

}  // namespace

// After the comment and the algorithm's two letters comes the key derivation function: "Sc", or two zeros.
bool CMinisignTool::NeedsPassword(const QString& keyFile) {
    QFile file(keyFile);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    file.readLine();
    return QByteArray::fromBase64(file.readLine()).mid(2, 2) == "Sc";
}

QByteArray CMinisignTool::AskForPassword(const QString& keyFile, std::ostream& err) {
    err << "Password of the secret key " << keyFile.toStdString() << ": " << std::flush;
    const bool isTerminal = tcgetattr(STDIN_FILENO, &shown) == 0;
    termios hidden = shown;
    hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    if (isTerminal) {
        for (const int signal : ENDS)
            std::signal(signal, EndWithEcho);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);
    }
    std::string line;
    std::getline(std::cin, line);
    if (isTerminal) {
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &shown);
        for (const int signal : ENDS)
            std::signal(signal, SIG_DFL);
    }
    err << '\n';
    return QByteArray::fromStdString(line);
}

std::unique_ptr<CMinisignTool> CMinisignTool::WithPassword(const QString& keyFile, std::ostream& err) {
    return std::make_unique<CMinisignTool>(
        keyFile, NeedsPassword(keyFile) ? AskForPassword(keyFile, err) : QByteArray());
}

std::optional<QByteArray> CMinisignTool::Sign(const QByteArray& content, const QString& trustedComment) {
    QFile message(folder_.filePath("message"));
    if (!message.open(QIODevice::WriteOnly) || message.write(content) != content.size() || !message.flush()) {
        problem_ = message.errorString();
        return std::nullopt;
    }
    return SignFile(message.fileName(), trustedComment);
}

std::optional<QByteArray> CMinisignTool::SignFile(const QString& path, const QString& trustedComment) {
    QFile signature(folder_.filePath("signature"));
    signature.remove();
    QProcess tool;
    tool.start("minisign", {"-S", "-s", keyFile_, "-m", path, "-x", signature.fileName(), "-t",
                            trustedComment, "-c", "the maker's signature"});
    tool.write(password_ + '\n');
    tool.closeWriteChannel();
    const bool isDone = tool.waitForFinished(LONGEST_SIGNING);
    if (tool.error() == QProcess::FailedToStart) {
        problem_ = "it cannot be started; install the package minisign";
        return std::nullopt;
    }
    if (!isDone || tool.exitStatus() != QProcess::NormalExit || tool.exitCode() != 0 ||
        !signature.open(QIODevice::ReadOnly)) {
        problem_ = isDone ? QString::fromUtf8(tool.readAllStandardError()).trimmed() : tool.errorString();
        return std::nullopt;
    }
    return signature.readAll();
}
