// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/ReportOptions.h"

#include "net/ProxyAddress.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>

#include <unistd.h>

namespace {

// A day, in seconds.
constexpr int LONGEST_TIMEOUT = 24 * 60 * 60;
// In bytes.
constexpr qint64 LONGEST_PASSWORD = 4096;

const char* const DESCRIPTION =
    "\nReports which of the maker's products are installed, and whether they are up to\n"
    "date, by the product list that the update program uses (the newer one of the\n"
    "user's and the installed copy). It says when the site has a newer list, but\n"
    "stores none, and does not look for a newer update program. It writes no\n"
    "settings, and may run beside the update program.";

const char* const EXIT_STATUS = R"(
Exit status:
  0   everything is current
  1   updates are available
  2   a product could not be checked; also when there are updates as well
  3   nothing could be reported: there is no product list, the installed products
      could not be read, no server was reached for any product, or the output
      could not be written
  64  wrong usage
Older versions, skipped ones, disabled products, notices and what --offline
leaves unchecked do not count.

The proxy is the one of the settings, unless --proxy names another. Nobody is
ever asked for its credentials: give --username and --password-file.
)";

// Each of these takes its options, and returns why they are wrong; empty when they are right or were not
// given.

QString TakeProxy(const QCommandLineParser& parser, ReportOptions& options) {
    if (!parser.isSet("proxy"))
        return {};
    const auto proxy = ParseProxyAddress(CAtlString(parser.value("proxy")));
    if (!proxy || !proxy->port)
        return "--proxy takes a host, a colon and a port";
    options.proxyHost = proxy->host;
    options.proxyPort = *proxy->port;
    return {};
}

QString TakeFormat(const QCommandLineParser& parser, ReportOptions& options) {
    const QString name =
        parser.isSet("format") ? parser.value("format") : QString(parser.isSet("json") ? "json" : "table");
    const int format = static_cast<int>(QStringList{"table", "json", "prometheus"}.indexOf(name));
    if (format < 0 || (parser.isSet("json") && name != "json"))
        return "--format takes table, json or prometheus, and with --json only json";
    options.format = static_cast<ReportFormat>(format);
    return parser.isSet("output") && options.output.isEmpty() ? "--output takes a file" : QString();
}

QString TakeTimes(const QCommandLineParser& parser, ReportOptions& options) {
    for (auto [name, time] : {std::pair("timeout", &options.timeout), {"deadline", &options.deadline}}) {
        if (!parser.isSet(name))
            continue;
        bool isNumber = false;
        const int seconds = parser.value(name).toInt(&isNumber);
        if (!isNumber || seconds < 1 || seconds > LONGEST_TIMEOUT)
            return QString("--%1 takes a whole number of seconds, from 1 to 86400").arg(name);
        *time = std::chrono::seconds(seconds);
    }
    return {};
}

QString TakePassword(const QCommandLineParser& parser, ReportOptions& options) {
    if (!parser.isSet("password-file"))
        return {};
    if (options.userName.isEmpty())
        return "--password-file needs --username as well";
    QFile file(parser.value("password-file"));
    if (!file.open(QIODevice::ReadOnly))
        return "the file of --password-file cannot be read";
    options.password = QString::fromUtf8(file.readLine(LONGEST_PASSWORD));
    while (options.password.endsWith('\n') || options.password.endsWith('\r'))
        options.password.chop(1);
    return {};
}

void AddOptions(QCommandLineParser& parser) {
    parser.setApplicationDescription(DESCRIPTION);
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsOptions);
    // The update program accepts this form, too.
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOptions(
        {{"json", "The same as --format json."},
         {"format", "What to print: table (default), json or prometheus.", "FORMAT"},
         {"output", "Replace this file, in one step, in place of printing.", "FILE"},
         {"explain", "Say for each product how the result came about."},
         {"offline", "Fetch nothing; only report what is installed."},
         {"fetch-list", "Use the site's product list in this run, when it is newer."},
         {"all-users", "Say for each user which list and which settings count (root only)."},
         {"proxy", "Fetch through this HTTP proxy.", "HOST:PORT"},
         {"username", "The user name for the proxy.", "NAME"},
         {"password-file", "A file whose first line is the password for the proxy.", "FILE"},
         {"timeout", "Give up each fetch after so many seconds (default: 60, or 30 of silence).", "SECONDS"},
         {"deadline", "Give up after so many seconds what has not been checked by then.", "SECONDS"},
         {{"h", "help"}, "Print this, and end."},
         {{"v", "version"}, "Print the version, and end."}});
}

}  // namespace

ReportOptions ReadReportOptions(const QStringList& arguments) {
    QCommandLineParser parser;
    AddOptions(parser);
    if (!parser.parse(arguments))
        return {.problem = parser.errorText()};
    ReportOptions options{.output = parser.value("output"),
                          .isExplained = parser.isSet("explain"),
                          .isOffline = parser.isSet("offline"),
                          .isListFetched = parser.isSet("fetch-list"),
                          .isOfAllUsers = parser.isSet("all-users"),
                          .userName = parser.value("username")};
    if (parser.isSet("help"))
        options.answer = parser.helpText() + EXIT_STATUS;
    else if (parser.isSet("version"))
        options.answer = "VARDOUpdateReport " + QCoreApplication::applicationVersion() + '\n';
    if (!parser.positionalArguments().isEmpty())
        options.problem = "there is an argument that belongs to no option";
    else if (options.isOffline && options.isListFetched)
        options.problem = "--offline and --fetch-list exclude each other";
    else if (options.isOfAllUsers && geteuid() != 0)
        options.problem = "--all-users is for root";
    for (const auto take : {TakeFormat, TakeProxy, TakeTimes, TakePassword})
        if (options.problem.isEmpty())
            options.problem = take(parser, options);
    return options;
}
