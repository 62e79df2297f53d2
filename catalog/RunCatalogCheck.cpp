// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/RunCatalogCheck.h"

#include "catalog/Checks.h"
#include "catalog/ValueChecks.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <ostream>

namespace {

constexpr const char* USAGE = "usage: VARDOCatalogCheck [--json] [--site ADDRESS] FOLDER\n";

constexpr const char* HELP = R"(
Reads a folder of files as they are published for VARDO Product Update (product lists, local and remote
descriptions, notifications, gallery lists, language tables, strings files), with all folders below it, and
says what the update program would ignore, reject or misread. Writes nothing but its findings, one in a line:

    FILE:LINE: error|warning|note: TEXT [CODE]

  --json           writes an array of objects with "file", "line", "severity", "code" and "text" instead
  --site ADDRESS   FOLDER is published at ADDRESS: every file that is named by an address below it must be
                   there. Without it, a product list that names its own address tells where it is published.
  --help           this text
  --version        the version of the program

Exit status: 0 nothing found, or notes only; 1 warnings; 2 errors, or the output could not be written;
64 wrong usage.
)";

struct Options {
    QString folder{};
    QString site{};
    bool isJson = false;
    bool isHelp = false;
    bool isVersion = false;
    // Why the arguments make no sense; empty when they do.
    QString problem{};
};

QString ProblemOf(const Options& options, const QCommandLineParser& parser) {
    if (options.isHelp || options.isVersion)
        return {};
    if (parser.positionalArguments().size() != 1)
        return QStringLiteral("there must be one folder");
    if (!options.site.isEmpty() && !CanBeFetched(options.site))
        return QStringLiteral("--site takes an address with \"http://\" and a host");
    if (const QFileInfo folder(options.folder); !folder.isDir() || !folder.isReadable())
        return QStringLiteral("\"%1\" is no folder that can be read").arg(options.folder);
    return {};
}

Options ReadOptions(const QStringList& arguments) {
    const QCommandLineOption json("json");
    const QCommandLineOption site("site", {}, "ADDRESS");
    const QCommandLineOption help(QStringList{"h", "help"});
    const QCommandLineOption version("version");
    QCommandLineParser parser;
    parser.addOptions({json, site, help, version});
    if (!parser.parse(arguments))
        return {.problem = parser.errorText()};
    Options options{.folder = parser.positionalArguments().value(0),
                    .site = parser.value(site),
                    .isJson = parser.isSet(json),
                    .isHelp = parser.isSet(help),
                    .isVersion = parser.isSet(version)};
    options.problem = ProblemOf(options, parser);
    return options;
}

int ExitStatus(const CFindings& findings) {
    if (findings.Count(Severity::ERROR) > 0)
        return EXIT_ERRORS;
    return findings.Count(Severity::WARNING) > 0 ? EXIT_WARNINGS : EXIT_CLEAN;
}

}  // namespace

int RunCatalogCheck(const QStringList& arguments, std::ostream& out, std::ostream& err) {
    const Options options = ReadOptions(arguments);
    if (!options.problem.isEmpty()) {
        err << "VARDOCatalogCheck: " << options.problem.toStdString() << '\n' << USAGE;
        return EXIT_WRONG_USAGE;
    }
    int status = EXIT_CLEAN;
    if (options.isHelp) {
        out << USAGE << HELP;
    } else if (options.isVersion) {
        out << "VARDOCatalogCheck " << VARDO_VERSION << '\n';
    } else {
        const CFindings findings = CheckCatalog(CCatalog(options.folder, options.site));
        out << (options.isJson ? findings.ToJson() : findings.ToText()).toStdString();
        status = ExitStatus(findings);
    }
    if (out.flush())
        return status;
    err << "VARDOCatalogCheck: the output could not be written\n";
    return EXIT_ERRORS;
}
