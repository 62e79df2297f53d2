// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/RunReport.h"

#include "net/Downloader.h"
#include "platform/desktop/CUnattendedEnvironment.h"
#include "platform/files/CTemporaryFolder.h"
#include "platform/text/PrintableText.h"
#include "report/CReportOptions.h"
#include "report/CUpdateReport.h"
#include "report/ReportText.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <boost/make_shared.hpp>
#include <iostream>

namespace {

// As of sysexits(3).
constexpr int WRONG_USAGE = 64;

// Says so on standard error when the text could not be written.
bool Print(const QString& text) {
    if (std::cout << text.toStdString() << std::flush)
        return true;
    std::cerr << "VARDOUpdateReport: the output could not be written\n";
    return false;
}

boost::shared_ptr<ProxyHandlerBase> MakeProxyHandler(const CReportOptions& options) {
    auto handler = boost::make_shared<ProxyHandlerBase>();
    if (options.GetProxyHost().IsEmpty())
        handler->LoadProxySettings();
    else
        handler->SetProxy(options.GetProxyHost(), options.GetProxyPort());
    handler->SetCredentials(CAtlString(options.GetUserName()), CAtlString(options.GetPassword()));
    handler->SetInteractive(false);
    return handler;
}

TransferBounds MakeBounds(const CReportOptions& options) {
    TransferBounds bounds;
    if (const auto timeout = options.GetTimeout()) {
        bounds.connect = *timeout;
        bounds.silence = *timeout;
        bounds.wholeTime = *timeout;
    }
    return bounds;
}

// Of no other process: the program itself may fetch for the same user at the same time.
CAtlString FileNames() {
    CAtlString names;
    names.Format(L"%s%lld", CTemporaryFolder::OWN_NAME,
                 static_cast<long long>(QCoreApplication::applicationPid()));
    return names;
}

int Report(const CReportOptions& options) {
    const auto downloader = boost::make_shared<Downloader>(MakeBounds(options), FileNames());
    downloader->SetProxyHandler(MakeProxyHandler(options));
    CUpdateReport report(boost::make_shared<CUnattendedEnvironment>(SharedDataFolder()), downloader);
    if (!options.IsOffline())
        Downloader::RemoveStaleFiles();
    if (!report.Run(options.IsOffline(), options.IsExplained()))
        std::cerr << "VARDOUpdateReport: there is no product list\n";
    const bool isPrinted =
        options.IsJson() ? Print(QString::fromUtf8(PrintableJson(QJsonDocument(report.ToJson()))))
                         : Print(ReportText(report.ToJson(),
                                            options.IsExplained() ? report.ExplainCommon() : QJsonObject()));
    return isPrinted ? report.GetExitStatus() : CUpdateReport::NOT_ALL_CHECKED;
}

}  // namespace

int RunReport(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(VARDO_VERSION);
    CReportOptions options;
    if (!options.Parse(QCoreApplication::arguments())) {
        std::cerr << "VARDOUpdateReport: " << options.GetProblem().toStdString()
                  << "\nVARDOUpdateReport --help says what is possible.\n";
        return WRONG_USAGE;
    }
    if (options.IsHelpWanted() || options.IsVersionWanted())
        return Print(options.IsHelpWanted() ? options.GetHelp() : options.GetVersion())
                   ? 0
                   : CUpdateReport::NOT_ALL_CHECKED;
    return Report(options);
}
