// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "publish/FolderProgram.h"

#include "platform/text/PrintableText.h"
#include "publish/CCatalogSigning.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <ostream>

namespace {

constexpr const char* USAGE =
    "usage: VARDOCatalogSign --key FILE [--days N] [--site ADDRESS[=FOLDER]] FOLDER\n";

constexpr const char* HELP = R"(
Signs the files that VARDO Product Update fetches from the maker's site, each in its place: product lists, remote
descriptions, messages and lists of published categories. A signature that is there already gives way to the new
one. Needs the tool minisign. Changes nothing when VARDOCatalogCheck finds an error in FOLDER that is not about
signatures.

  --key FILE       the secret key that minisign made
  --days N         the signatures are good for so many days (default: 90)
  --site ADDRESS[=FOLDER]
                   FOLDER, or the folder in it that is named here, is published at ADDRESS. Without it, a product list
                   that names its own address tells where it is published.
  --help           this text
  --version        the version of the program

Exit status: 0 all is signed; 2 errors; 64 wrong usage.
)";

constexpr ProgramTexts TEXTS{"VARDOCatalogSign", USAGE, HELP};

struct Options {
    FolderArguments arguments{};
    QString key{};
    int days = CCatalogSigning::USUAL_DAYS;
    CommonOptions common{};
};

QString ProblemOf(const Options& options) {
    if (!QFileInfo(options.key).isFile())
        return "--key takes the file of a secret key";
    const QString problem = CCatalogSigning::DaysProblem(options.days);
    return problem.isEmpty() ? options.arguments.problem : problem;
}

Options ReadOptions(const QStringList& arguments) {
    const QCommandLineOption key("key", {}, "FILE");
    const QCommandLineOption days("days", {}, "N", QString::number(CCatalogSigning::USUAL_DAYS));
    const QCommandLineOption site("site", {}, "ADDRESS");
    const QCommandLineOption help(QStringList{"h", "help"});
    const QCommandLineOption version("version");
    QCommandLineParser parser;
    parser.addOptions({key, days, site, help, version});
    if (!parser.parse(arguments))
        return {.common = {.problem = parser.errorText()}};
    Options options{.arguments = ReadFolder(parser.positionalArguments(), parser.value(site)),
                    .key = parser.value(key),
                    .days = parser.value(days).toInt(),
                    .common = {.isHelp = parser.isSet(help), .isVersion = parser.isSet(version)}};
    options.common.problem = ProblemOf(options);
    return options;
}

int SignFolder(const Options& options, std::ostream& out, std::ostream& err) {
    const auto& [folder, siteAddress, siteFolder, problem] = options.arguments;
    const CCatalog catalog(folder, siteAddress, siteFolder);
    QString failure = CCatalogSigning::Obstacle(catalog, err);
    if (failure.isEmpty()) {
        CCatalogSigning signing(catalog, CMinisignTool::WithPassword(options.key, err), options.days);
        const auto files = signing.SignAll();
        failure =
            files ? CCatalogSigning::ReplaceAll(*files, out) : signing.GetProblem() + "; nothing was signed";
    }
    if (failure.isEmpty())
        return EXIT_CLEAN;
    err << "VARDOCatalogSign: " << Printable(failure).toStdString() << '\n';
    return EXIT_ERRORS;
}

}  // namespace

int RunCatalogSign(const QStringList& arguments, std::ostream& out, std::ostream& err) {
    const Options options = ReadOptions(arguments);
    return RunProgram(
        TEXTS, options.common, [&] { return SignFolder(options, out, err); }, out, err);
}
