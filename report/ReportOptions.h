// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the command line of the report says.
#pragma once

#include "platform/text/CAtlString.h"

#include <QString>
#include <QStringList>
#include <chrono>
#include <optional>

enum class ReportFormat { TABLE, JSON, PROMETHEUS };

struct ReportOptions {
    // Why the arguments are wrong, without their values; empty when they are right.
    QString problem{};
    // What is to be printed in place of a report: help or version.
    QString answer{};
    ReportFormat format = ReportFormat::TABLE;
    // Where the report goes; empty means standard output.
    QString output{};
    bool isExplained = false;
    bool isOffline = false;
    bool isListFetched = false;
    // Whether every user of the machine has a line; for root alone.
    bool isOfAllUsers = false;
    // When empty, the stored proxy counts.
    CAtlString proxyHost{};
    int proxyPort = 0;
    // For the proxy; empty when not given.
    QString userName{};
    QString password{};
    // The bounds of each fetch and of the whole run, when they were given.
    std::optional<std::chrono::milliseconds> timeout{};
    std::optional<std::chrono::milliseconds> deadline{};
};

// Reads the arguments, the program's own name first. GUI thread, while a QCoreApplication exists.
ReportOptions ReadReportOptions(const QStringList& arguments);
