// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "publish/CMinisignTool.h"

#include <QFile>
#include <QProcess>

namespace {

// Keys with a password take seconds, and the machine may be slow.
constexpr int LONGEST_SIGNING = 120'000;  // milliseconds

}  // namespace

// Behind the comment and the two letters of the algorithm stands the name of the function that makes a key of
// the password: "Sc", or two zeros.
bool CMinisignTool::NeedsPassword(const QString& keyFile) {
    QFile file(keyFile);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    file.readLine();
    return QByteArray::fromBase64(file.readLine()).mid(2, 2) == "Sc";
}

std::optional<QByteArray> CMinisignTool::Sign(const QByteArray& content, const QString& trustedComment) {
    QFile message(folder_.filePath(QStringLiteral("message")));
    QFile signature(folder_.filePath(QStringLiteral("signature")));
    signature.remove();
    if (!message.open(QIODevice::WriteOnly) || message.write(content) != content.size() || !message.flush()) {
        problem_ = message.errorString();
        return std::nullopt;
    }
    QProcess tool;
    tool.start(QStringLiteral("minisign"),
               {QStringLiteral("-S"), QStringLiteral("-s"), keyFile_, QStringLiteral("-m"),
                message.fileName(), QStringLiteral("-x"), signature.fileName(), QStringLiteral("-t"),
                trustedComment, QStringLiteral("-c"), QStringLiteral("signed by VARDOCatalogSign")});
    tool.write(password_ + '\n');
    tool.closeWriteChannel();
    const bool isDone = tool.waitForFinished(LONGEST_SIGNING);
    if (!isDone || tool.exitStatus() != QProcess::NormalExit || tool.exitCode() != 0 ||
        !signature.open(QIODevice::ReadOnly)) {
        problem_ = isDone ? QString::fromUtf8(tool.readAllStandardError()).trimmed() : tool.errorString();
        return std::nullopt;
    }
    return signature.readAll();
}
