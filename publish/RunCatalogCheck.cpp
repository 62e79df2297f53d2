// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "publish/FolderProgram.h"

#include "catalog/Checks.h"
#include "catalog/ValueChecks.h"
#include "platform/files/CTemporaryFolder.h"
#include "publish/CPreview.h"
#include "publish/LiveCheck.h"

#include <QRegularExpression>
#include <ostream>

namespace {

constexpr const char* USAGE =
    "usage: VARDOCatalogCheck [--json] [--quiet] [--site ADDRESS[=FOLDER]] FOLDER\n"
    "       VARDOCatalogCheck --preview [--json] [--site ADDRESS[=FOLDER]] [KEY=VERSION ...] FOLDER\n"
    "       VARDOCatalogCheck --live ADDRESS [--json] [--quiet] [--site ADDRESS[=FOLDER]] FOLDER\n";

constexpr const char* HELP = R"(
Reads a folder of files as they are published for VARDO Product Update (product lists, local and remote
descriptions, notifications, gallery lists, language tables, strings files), with all folders below it, and
says what the update program would ignore, reject or misread. Writes nothing but its findings, one in a line,
and how many there are:

    FILE:LINE: error|warning|note: TEXT [CODE]
    2 errors, 1 warning

  --json           writes an array of objects with "file", "line", "severity", "code" and "text" instead
  --quiet          leaves out the notes and, when all is well, the last line
  --site ADDRESS[=FOLDER]
                   FOLDER, or the folder in it that is named here, is published at ADDRESS: every file that is
                   named by an address below it must be there. Without it, a product list that names its own
                   address tells where it is published.
  --preview        says instead what each installed version of each product would be offered, or just the
                   VERSION of the product with that KEY, and why an update of the program itself would not be
                   accepted
  --live ADDRESS   fetches instead, from a server, what installed programs fetch, and says what they would not
                   get, or get otherwise than it is in the folder that is published; ADDRESS is that of this
                   folder. Directly, through no proxy.
  --help           this text
  --version        the version of the program

Exit status: 0 nothing found, or notes only, or a preview; 1 warnings; 2 errors, or the output could not be
written; 64 wrong usage.
)";

constexpr ProgramTexts TEXTS{"VARDOCatalogCheck", USAGE, HELP};

struct Options {
    FolderArguments arguments{};
    bool isJson = false;
    bool isQuiet = false;
    bool isPreview = false;
    CPreview::Versions versions{};
    QString live{};
};

// Takes "KEY=VERSION" from the arguments before the last; false when one is anything else, or a key comes
// twice.
bool TakeVersions(QStringList& arguments, CPreview::Versions& versions) {
    while (arguments.size() > 1) {
        const QString argument = arguments.takeFirst();
        const QString version = argument.section(u'=', 1);
        const QString key = argument.section(u'=', 0, 0);
        if (key.isEmpty() || version.isEmpty() || !versions.try_emplace(key, version).second)
            return false;
    }
    return true;
}

Options ReadOptions(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.addOptions(FolderOptions());
    parser.addOptions({{"json", {}}, {"quiet", {}}, {"preview", {}}, {"live", {}, "ADDRESS"}});
    if (!parser.parse(arguments))
        return {.arguments = {.problem = parser.errorText()}};
    QStringList others = parser.positionalArguments();
    CPreview::Versions versions;
    if (parser.isSet("preview") && !TakeVersions(others, versions))
        return {.arguments = {.problem = "before the folder there may be KEY=VERSION"}};
    Options options{.arguments = TakeFolder(parser, others),
                    .isJson = parser.isSet("json"),
                    .isQuiet = parser.isSet("quiet"),
                    .isPreview = parser.isSet("preview"),
                    .versions = versions,
                    .live = parser.value("live")};
    static const QRegularExpression unsent("[@?#]");
    QString& problem = options.arguments.problem;
    if (problem.isEmpty() && parser.isSet("live") &&
        (options.isPreview || !CanBeFetched(options.live) || options.live.contains(unsent)))
        problem = "--live takes an address with \"http://\", a host and folders alone, and no --preview";
    return options;
}

int ExitStatus(const CFindings& findings) {
    if (findings.Count(Severity::ERROR) > 0)
        return EXIT_ERRORS;
    return findings.Count(Severity::WARNING) > 0 ? EXIT_WARNINGS : EXIT_CLEAN;
}

// Writes the findings; the exit status for them.
int Tell(const CFindings& all, const Options& options, std::ostream& out) {
    const CFindings findings = options.isQuiet ? all.WithoutNotes() : all;
    const int status = ExitStatus(findings);
    out << (options.isJson ? findings.ToJson() : findings.ToText()).toStdString();
    if (!options.isJson && (!options.isQuiet || status != EXIT_CLEAN))
        out << findings.Summary().toStdString() << '\n';
    return status;
}

// Where nothing tells what is published, all of the folder is.
CFindings AskServer(const CCatalog& catalog, const Options& options) {
    Downloader downloader({}, CTemporaryFolder::NamesOfProcess());
    return catalog.GetSite()
               ? CheckLive(catalog, options.live, downloader)
               : CheckLive(CCatalog(options.arguments.folder, options.live), options.live, downloader);
}

int ShowPreview(const CCatalog& catalog, const Options& options, std::ostream& out, std::ostream& err) {
    const CPreview preview(catalog, options.versions);
    if (const QString key = preview.GetUnknownKey(); !key.isEmpty())
        return RefuseUsage(TEXTS, QString("no product here has the key \"%1\"").arg(key), err);
    out << (options.isJson ? preview.ToJson() : preview.ToText()).toStdString();
    return EXIT_CLEAN;
}

int Check(const Options& options, std::ostream& out, std::ostream& err) {
    const CCatalog catalog = options.arguments.Read();
    if (!options.live.isEmpty())
        return Tell(AskServer(catalog, options), options, out);
    return options.isPreview ? ShowPreview(catalog, options, out, err)
                             : Tell(CheckCatalog(catalog), options, out);
}

}  // namespace

int RunCatalogCheck(const QStringList& arguments, std::ostream& out, std::ostream& err) {
    const Options options = ReadOptions(arguments);
    return RunProgram(
        TEXTS, options.arguments, [&] { return Check(options, out, err); }, out, err);
}
