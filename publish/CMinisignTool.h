// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The tool that makes signatures (minisign(1)), with one secret key.
#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>
#include <iosfwd>
#include <memory>
#include <optional>

// Runs the tool once for each signature. The secret key stays in its file, and only the tool gets the
// password. One thread.
class CMinisignTool {
public:
    // password is the key's; ignored when the key has none.
    CMinisignTool(const QString& keyFile, const QByteArray& password)
        : keyFile_(keyFile), password_(password) {}

    // The tool with that key. If the key has a password, asks for it on err and reads it from standard input,
    // unseen in a terminal.
    static std::unique_ptr<CMinisignTool> WithPassword(const QString& keyFile, std::ostream& err);
    // The four lines of a signature of content; nothing when the tool failed.
    std::optional<QByteArray> Sign(const QByteArray& content, const QString& trustedComment);
    // The same for a file's contents.
    std::optional<QByteArray> SignFile(const QString& path, const QString& trustedComment);
    // Why it failed, in the tool's words or the system's.
    const QString& GetProblem() const { return problem_; }

private:
    // Whether the tool will want a password for a secret key.
    static bool NeedsPassword(const QString& keyFile);
    static QByteArray AskForPassword(const QString& keyFile, std::ostream& err);

    QString keyFile_;
    QByteArray password_;
    QTemporaryDir folder_;
    QString problem_;
};
