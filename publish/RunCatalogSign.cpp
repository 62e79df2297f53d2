// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "publish/FolderProgram.h"

#include "publish/CCatalogSigning.h"

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
};

QString ProblemOf(const Options& options) {
    if (!QFileInfo(options.key).isFile())
        return "--key takes the file of a secret key";
    const QString problem = CCatalogSigning::DaysProblem(options.days);
    return problem.isEmpty() ? options.arguments.problem : problem;
}

Options ReadOptions(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.addOptions(FolderOptions());
    parser.addOptions({{"key", {}, "FILE"}, {"days", {}, "N", QString::number(CCatalogSigning::USUAL_DAYS)}});
    if (!parser.parse(arguments))
        return {.arguments = {.problem = parser.errorText()}};
    Options options{.arguments = TakeFolder(parser, parser.positionalArguments()),
                    .key = parser.value("key"),
                    .days = parser.value("days").toInt()};
    options.arguments.problem = ProblemOf(options);
    return options;
}

int SignFolder(const Options& options, std::ostream& out, std::ostream& err) {
    const CCatalog catalog = options.arguments.Read();
    QString failure = CCatalogSigning::Obstacle(catalog, err);
    if (failure.isEmpty()) {
        CCatalogSigning signing(catalog, CMinisignTool::WithPassword(options.key, err), options.days);
        const auto files = signing.SignAll();
        failure =
            files ? CCatalogSigning::ReplaceAll(*files, out) : signing.GetProblem() + "; nothing was signed";
    }
    return failure.isEmpty() ? EXIT_CLEAN : Fail(TEXTS, failure, err);
}

}  // namespace

int RunCatalogSign(const QStringList& arguments, std::ostream& out, std::ostream& err) {
    const Options options = ReadOptions(arguments);
    return RunProgram(
        TEXTS, options.arguments, [&] { return SignFolder(options, out, err); }, out, err);
}
