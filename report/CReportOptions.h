// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the command line of the report says.
#pragma once

#include "platform/text/CAtlString.h"

#include <QCommandLineParser>
#include <QString>
#include <QStringList>
#include <chrono>
#include <optional>

// GUI thread, while a QCoreApplication exists.
class CReportOptions {
public:
    CReportOptions();

    // Reads the arguments, the program's own name first. False when they are wrong: GetProblem says why, and
    // repeats no value.
    bool Parse(const QStringList& arguments);
    const QString& GetProblem() const { return problem_; }

    bool IsHelpWanted() const { return parser_.isSet(help_); }
    bool IsVersionWanted() const { return parser_.isSet(version_); }
    bool IsJson() const { return parser_.isSet(json_); }
    bool IsExplained() const { return parser_.isSet(explain_); }
    bool IsOffline() const { return parser_.isSet(offline_); }
    // Empty: the stored proxy counts.
    const CAtlString& GetProxyHost() const { return proxyHost_; }
    int GetProxyPort() const { return proxyPort_; }
    // For the proxy; empty when not given.
    QString GetUserName() const { return parser_.value(userName_); }
    const QString& GetPassword() const { return password_; }
    // The bound of each fetch, when one was given.
    std::optional<std::chrono::milliseconds> GetTimeout() const { return timeout_; }

    QString GetHelp() const;
    static QString GetVersion();

private:
    bool Fail(const char* problem);
    bool ReadProxy();
    bool ReadTimeout();
    bool ReadPassword();

    QCommandLineOption json_;
    QCommandLineOption explain_;
    QCommandLineOption offline_;
    QCommandLineOption proxy_;
    QCommandLineOption userName_;
    QCommandLineOption passwordFile_;
    QCommandLineOption wait_;
    QCommandLineOption help_;
    QCommandLineOption version_;
    QCommandLineParser parser_;
    QString problem_;
    CAtlString proxyHost_;
    int proxyPort_ = 0;
    QString password_;
    std::optional<std::chrono::milliseconds> timeout_;
};
