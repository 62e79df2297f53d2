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

enum class ReportFormat { TABLE, JSON, PROMETHEUS };

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
    ReportFormat GetFormat() const { return format_; }
    // Where the report goes; empty means standard output.
    QString GetOutput() const { return parser_.value(output_); }
    bool IsExplained() const { return parser_.isSet(explain_); }
    bool IsOffline() const { return parser_.isSet(offline_); }
    // Whether every user of the machine has a line; for root alone.
    bool IsOfAllUsers() const { return parser_.isSet(allUsers_); }
    bool IsListFetched() const { return parser_.isSet(fetchList_); }
    // When empty, the stored proxy counts.
    const CAtlString& GetProxyHost() const { return proxyHost_; }
    int GetProxyPort() const { return proxyPort_; }
    // For the proxy; empty when not given.
    QString GetUserName() const { return parser_.value(userName_); }
    const QString& GetPassword() const { return password_; }
    // The bound of each fetch, when one was given.
    std::optional<std::chrono::milliseconds> GetTimeout() const { return timeout_; }
    // The bound of the whole run, when one was given.
    std::optional<std::chrono::milliseconds> GetDeadline() const { return deadline_; }

    QString GetHelp() const;
    static QString GetVersion();

private:
    bool Fail(const QString& problem);
    bool ReadProxy();
    bool ReadFormat();
    // Reads an option that takes seconds, if it was given; false when it is wrong.
    bool ReadSeconds(const QCommandLineOption& option, std::optional<std::chrono::milliseconds>& time);
    bool ReadPassword();

    QCommandLineOption json_;
    QCommandLineOption formatName_;
    QCommandLineOption output_;
    QCommandLineOption explain_;
    QCommandLineOption offline_;
    QCommandLineOption fetchList_;
    QCommandLineOption allUsers_;
    QCommandLineOption proxy_;
    QCommandLineOption userName_;
    QCommandLineOption passwordFile_;
    QCommandLineOption wait_;
    QCommandLineOption whole_;
    QCommandLineOption help_;
    QCommandLineOption version_;
    QCommandLineParser parser_;
    QString problem_;
    ReportFormat format_ = ReportFormat::TABLE;
    CAtlString proxyHost_;
    int proxyPort_ = 0;
    QString password_;
    std::optional<std::chrono::milliseconds> timeout_;
    std::optional<std::chrono::milliseconds> deadline_;
};
