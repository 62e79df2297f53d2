// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The entry point of the report for administrators. It needs no display, asks no question, takes no lock
// and writes no settings.
#include "net/Downloader.h"
#include "platform/desktop/CInterruption.h"
#include "platform/desktop/CUnattendedEnvironment.h"
#include "platform/desktop/StandardStreams.h"
#include "platform/files/CTemporaryFolder.h"
#include "platform/text/PrintableText.h"
#include "report/CUpdateReport.h"
#include "report/ReportOptions.h"
#include "report/ReportPrinting.h"
#include "report/RunFacts.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>
#include <QTimer>
#include <boost/make_shared.hpp>
#include <iostream>

#include <sys/stat.h>

namespace {

// As of sysexits(3).
constexpr int WRONG_USAGE = 64;

void Remark(const QString& sentence) {
    std::cerr << "VARDOUpdateReport: " << Printable(sentence).toStdString() << '\n';
}

// Says so on standard error when the text could not be written.
bool Print(const QString& text) {
    if (std::cout << text.toStdString() << std::flush)
        return true;
    Remark("the output could not be written");
    return false;
}

// A reader of the file finds the old text or the new one, whole. Devices and pipes are not replaced, and no
// link is followed, which another user may have put into the folder.
bool Replace(const QString& path, const QString& text) {
    const QFileInfo there(path);
    QSaveFile file(path);
    if (there.isSymLink() || (there.exists() && !there.isFile()) || !file.open(QIODevice::WriteOnly))
        return false;
    constexpr mode_t EVERYBODY_READS = S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH;
    const mode_t mask = umask(0);
    umask(mask);
    const QByteArray bytes = text.toUtf8();
    // Flushed here, because committing forgets that its own flush has failed.
    return file.write(bytes) == bytes.size() && file.flush() &&
           fchmod(file.handle(), EVERYBODY_READS & ~mask) == 0 && file.commit();
}

bool Deliver(const QString& text, const QString& file) {
    if (file.isEmpty())
        return Print(text);
    if (Replace(file, text))
        return true;
    Remark("the file of --output could not be written, and is as it was");
    return false;
}

boost::shared_ptr<ProxyHandlerBase> MakeProxyHandler(const ReportOptions& options) {
    auto handler = boost::make_shared<ProxyHandlerBase>();
    if (options.proxyHost.IsEmpty())
        handler->LoadProxySettings();
    else
        handler->SetProxy(options.proxyHost, options.proxyPort);
    handler->SetCredentials(CAtlString(options.userName), CAtlString(options.password));
    handler->SetInteractive(false);
    return handler;
}

TransferBounds MakeBounds(const ReportOptions& options) {
    TransferBounds bounds;
    if (const auto timeout = options.timeout) {
        bounds.connect = *timeout;
        bounds.silence = *timeout;
        bounds.wholeTime = *timeout;
    }
    return bounds;
}

QString TextOf(const QJsonObject& json, bool isListed, const ReportOptions& options) {
    switch (options.format) {
        case ReportFormat::JSON:
            return QString::fromUtf8(PrintableJson(QJsonDocument(json)));
        case ReportFormat::PROMETHEUS:
            return PrometheusText(json);
        case ReportFormat::TABLE:
            break;
    }
    const QString text = isListed || options.isExplained ? ReportText(json, options.isExplained) : QString();
    return options.isOfAllUsers ? text + '\n' + UsersText(json) : text;
}

// Fails without a list. When the deadline or a signal comes first, the report has what is known by then.
bool Run(CUpdateReport& report, const ReportOptions& options, const QDeadlineTimer& end) {
    using End = CUpdateReport::End;
    const CInterruption interruption([&report] { report.Stop(End::INTERRUPTED); });
    QTimer deadline;
    QObject::connect(&deadline, &QTimer::timeout, [&report] { report.Stop(End::DEADLINE); });
    if (!end.isForever())
        deadline.start(static_cast<int>(end.remainingTime()));
    return report.Run({.isOffline = options.isOffline,
                       .isListFetched = options.isListFetched,
                       .isExplained = options.isExplained});
}

int Report(const ReportOptions& options) {
    const auto environment = boost::make_shared<CUnattendedEnvironment>(SharedDataFolder());
    const auto limit = options.deadline;
    const QDeadlineTimer end = limit ? QDeadlineTimer(*limit) : QDeadlineTimer(QDeadlineTimer::Forever);
    QStringList unread;
    const QJsonArray users = options.isOfAllUsers ? UsersFacts(environment, end, unread) : QJsonArray();
    for (const QString& user : unread)
        Remark("the home of " + user + " could not be read");
    // The program itself may fetch for the same user at the same time.
    const auto downloader =
        boost::make_shared<Downloader>(MakeBounds(options), CTemporaryFolder::NamesOfProcess());
    downloader->SetProxyHandler(MakeProxyHandler(options));
    CUpdateReport report(environment, downloader);
    if (!options.isOffline)
        Downloader::RemoveStaleFiles();
    const bool isListed = Run(report, options, end);
    for (const QString& remark : report.GetRemarks())
        Remark(remark);
    // An earlier report in the file says more.
    if (!report.IsFolderRead() && !options.output.isEmpty())
        return CUpdateReport::NOTHING_REPORTED;
    QJsonObject json = report.ToJson();
    if (options.isOfAllUsers)
        json["users"] = users;
    return Deliver(TextOf(json, isListed, options), options.output) ? report.GetExitStatus()
                                                                    : CUpdateReport::NOTHING_REPORTED;
}

// Reports, or says what is wrong with the arguments. Returns the exit status.
int RunReport(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(VARDO_VERSION);
    const ReportOptions options = ReadReportOptions(QCoreApplication::arguments());
    if (!options.problem.isEmpty()) {
        Remark(options.problem);
        std::cerr << "VARDOUpdateReport --help says what is possible.\n";
        return WRONG_USAGE;
    }
    if (!options.answer.isEmpty())
        return Print(options.answer) ? 0 : CUpdateReport::NOTHING_REPORTED;
    return Report(options);
}

}  // namespace

int main(int argc, char** argv) {
    SecureStandardStreams();
    return RunReport(argc, argv);
}
