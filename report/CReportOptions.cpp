// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/CReportOptions.h"

#include "net/ProxyAddress.h"

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
  3   nothing could be reported: there is no product list, no server was reached
      for any product, or the output could not be written
  64  wrong usage
Older versions, skipped ones, disabled products, notices and what --offline
leaves unchecked do not count.

The proxy is the one of the settings, unless --proxy names another. Nobody is
ever asked for its credentials: give --username and --password-file.
)";

}  // namespace

CReportOptions::CReportOptions()
    : json_("json", "The same as --format json."),
      formatName_("format", "What to print: table (default), json or prometheus.", "FORMAT"),
      output_("output", "Replace this file, in one step, in place of printing.", "FILE"),
      explain_("explain", "Say for each product how the result came about."),
      offline_("offline", "Fetch nothing; only report what is installed."),
      fetchList_("fetch-list", "Use the site's product list in this run, when it is newer."),
      allUsers_("all-users", "Say for each user which list and which settings count (root only)."),
      proxy_("proxy", "Fetch through this HTTP proxy.", "HOST:PORT"),
      userName_("username", "The user name for the proxy.", "NAME"),
      passwordFile_("password-file", "A file whose first line is the password for the proxy.", "FILE"),
      wait_("timeout", "Give up each fetch after so many seconds (default: 60, or 30 of silence).",
            "SECONDS"),
      whole_("deadline", "Give up after so many seconds what has not been checked by then.", "SECONDS"),
      help_({"h", "help"}, "Print this, and end."),
      version_({"v", "version"}, "Print the version, and end.") {
    parser_.setApplicationDescription(DESCRIPTION);
    parser_.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsOptions);
    // The update program accepts this form, too.
    parser_.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser_.addOptions({json_, formatName_, output_, explain_, offline_, fetchList_, allUsers_, proxy_,
                        userName_, passwordFile_, wait_, whole_, help_, version_});
}

bool CReportOptions::Parse(const QStringList& arguments) {
    if (!parser_.parse(arguments)) {
        problem_ = parser_.errorText();
        return false;
    }
    if (!parser_.positionalArguments().isEmpty())
        return Fail("there is an argument that belongs to no option");
    if (IsOffline() && IsListFetched())
        return Fail("--offline and --fetch-list exclude each other");
    if (IsOfAllUsers() && geteuid() != 0)
        return Fail("--all-users is for root");
    return ReadFormat() && ReadProxy() && ReadSeconds(wait_, timeout_) && ReadSeconds(whole_, deadline_) &&
           ReadPassword();
}

bool CReportOptions::Fail(const QString& problem) {
    problem_ = problem;
    return false;
}

bool CReportOptions::ReadProxy() {
    if (!parser_.isSet(proxy_))
        return true;
    const auto proxy = ParseProxyAddress(CAtlString(parser_.value(proxy_)));
    if (!proxy || !proxy->port)
        return Fail("--proxy takes a host, a colon and a port");
    proxyHost_ = proxy->host;
    proxyPort_ = *proxy->port;
    return true;
}

bool CReportOptions::ReadFormat() {
    const QString name = parser_.isSet(formatName_) ? parser_.value(formatName_)
                                                    : QString(parser_.isSet(json_) ? "json" : "table");
    const int format = static_cast<int>(QStringList{"table", "json", "prometheus"}.indexOf(name));
    if (format < 0 || (parser_.isSet(json_) && name != "json"))
        return Fail("--format takes table, json or prometheus, and with --json only json");
    format_ = static_cast<ReportFormat>(format);
    return parser_.isSet(output_) == !GetOutput().isEmpty() || Fail("--output takes a file");
}

bool CReportOptions::ReadSeconds(const QCommandLineOption& option,
                                 std::optional<std::chrono::milliseconds>& time) {
    if (!parser_.isSet(option))
        return true;
    bool isNumber = false;
    const int seconds = parser_.value(option).toInt(&isNumber);
    if (!isNumber || seconds < 1 || seconds > LONGEST_TIMEOUT)
        return Fail("--" + option.names().first() + " takes a whole number of seconds, from 1 to 86400");
    time = std::chrono::seconds(seconds);
    return true;
}

bool CReportOptions::ReadPassword() {
    if (!parser_.isSet(passwordFile_))
        return true;
    if (GetUserName().isEmpty())
        return Fail("--password-file needs --username as well");
    QFile file(parser_.value(passwordFile_));
    if (!file.open(QIODevice::ReadOnly))
        return Fail("the file of --password-file cannot be read");
    password_ = QString::fromUtf8(file.readLine(LONGEST_PASSWORD));
    while (password_.endsWith('\n') || password_.endsWith('\r'))
        password_.chop(1);
    return true;
}

QString CReportOptions::GetHelp() const {
    return parser_.helpText() + EXIT_STATUS;
}

QString CReportOptions::GetVersion() {
    return "VARDOUpdateReport " + QCoreApplication::applicationVersion() + '\n';
}
