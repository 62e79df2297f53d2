// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/CReportOptions.h"

#include "net/ProxyAddress.h"

#include <QCoreApplication>
#include <QFile>

namespace {

// A day, in seconds.
constexpr int LONGEST_TIMEOUT = 24 * 60 * 60;
// In bytes.
constexpr qint64 LONGEST_PASSWORD = 4096;

const char* const DESCRIPTION =
    "\nReports which of the maker's products are installed, and whether they are up to\n"
    "date. It reads the product list that the update program reads (the newer one of\n"
    "the user's and the installed copy), but does not refresh it, and does not look\n"
    "for a newer update program. It writes no settings, and may run beside the\n"
    "update program.";

const char* const EXIT_STATUS = R"(
Exit status:
  0   everything is current
  1   updates are available
  2   something was not checked, for whatever reason; also when there are
      updates as well, without a product list, and with --offline whenever
      something is installed that could have been checked. Notices do not count.
      Or the output could not be written
  64  wrong usage

The proxy is the one of the settings, unless --proxy names another. Nobody is
ever asked for its credentials: give --username and --password-file.
)";

}  // namespace

CReportOptions::CReportOptions()
    : json_("json", "Print an array of JSON objects in place of a table."),
      explain_("explain", "Say for each product how the result came about."),
      offline_("offline", "Fetch nothing; only report what is installed."),
      proxy_("proxy", "Fetch through this HTTP proxy.", "HOST:PORT"),
      userName_("username", "Who to be for the proxy.", "NAME"),
      passwordFile_("password-file", "A file whose first line is the password for the proxy.", "FILE"),
      wait_("timeout", "Give up each fetch after so many seconds (default: 60, or 30 of silence).",
            "SECONDS"),
      help_({"h", "help"}, "Print this, and end."),
      version_({"v", "version"}, "Print the version, and end.") {
    parser_.setApplicationDescription(DESCRIPTION);
    parser_.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsOptions);
    parser_.addOptions({json_, explain_, offline_, proxy_, userName_, passwordFile_, wait_, help_, version_});
}

bool CReportOptions::Parse(const QStringList& arguments) {
    if (!parser_.parse(arguments)) {
        problem_ = parser_.errorText();
        return false;
    }
    if (!parser_.positionalArguments().isEmpty())
        return Fail("there is an argument that belongs to no option");
    return ReadProxy() && ReadTimeout() && ReadPassword();
}

bool CReportOptions::Fail(const char* problem) {
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

bool CReportOptions::ReadTimeout() {
    if (!parser_.isSet(wait_))
        return true;
    bool isNumber = false;
    const int seconds = parser_.value(wait_).toInt(&isNumber);
    if (!isNumber || seconds < 1 || seconds > LONGEST_TIMEOUT)
        return Fail("--timeout takes a whole number of seconds, from 1 to 86400");
    timeout_ = std::chrono::seconds(seconds);
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
