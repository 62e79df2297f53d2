// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/catalog/RunCatalogCheck.h"

#include "app/catalog/Checks.h"

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

Exit status: 0 nothing found, or notes only; 1 warnings; 2 errors; 64 wrong usage.
)";

struct Options {
    QString folder;
    QString site;
    bool isJson = false;
    bool isHelp = false;
    bool isVersion = false;
};

// Nothing when the arguments make no sense.
std::optional<Options> ReadOptions(const QStringList& arguments) {
    Options options;
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        if (argument == u"--json")
            options.isJson = true;
        else if (argument == u"--help" || argument == u"-h")
            options.isHelp = true;
        else if (argument == u"--version")
            options.isVersion = true;
        else if (argument == u"--site" && i + 1 < arguments.size())
            options.site = arguments[++i];
        else if (!argument.startsWith(u'-') && options.folder.isEmpty())
            options.folder = argument;
        else
            return std::nullopt;
    }
    const bool isEnough = options.isHelp || options.isVersion || !options.folder.isEmpty();
    return isEnough ? std::optional(options) : std::nullopt;
}

int ExitStatus(const CFindings& findings) {
    if (findings.Count(Severity::ERROR) > 0)
        return EXIT_ERRORS;
    return findings.Count(Severity::WARNING) > 0 ? EXIT_WARNINGS : EXIT_CLEAN;
}

}  // namespace

int RunCatalogCheck(const QStringList& arguments, std::ostream& out, std::ostream& err) {
    const auto options = ReadOptions(arguments);
    if (!options) {
        err << USAGE;
        return EXIT_WRONG_USAGE;
    }
    if (options->isHelp) {
        out << USAGE << HELP;
        return EXIT_CLEAN;
    }
    if (options->isVersion) {
        out << "VARDOCatalogCheck " << VARDO_VERSION << '\n';
        return EXIT_CLEAN;
    }
    if (const QFileInfo folder(options->folder); !folder.isDir() || !folder.isReadable()) {
        err << "VARDOCatalogCheck: \"" << options->folder.toStdString()
            << "\" is no folder that can be read\n";
        return EXIT_WRONG_USAGE;
    }
    const CCatalog catalog(options->folder, options->site);
    const CFindings findings = CheckCatalog(catalog);
    out << (options->isJson ? findings.ToJson() : findings.ToText()).toStdString();
    return ExitStatus(findings);
}
