// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "publish/RunCatalogSign.h"

#include "catalog/Checks.h"
#include "platform/files/CVardoDirectoryPath.h"
#include "platform/files/FileReplacement.h"
#include "publish/CMinisignTool.h"
#include "signing/CCatalogueSeal.h"
#include "signing/LastDay.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QTemporaryFile>
#include <algorithm>
#include <iostream>

#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr const char* USAGE = "usage: VARDOCatalogSign --key FILE [--days N] [--site ADDRESS] FOLDER\n";

constexpr const char* HELP = R"(
Signs the files that VARDO Product Update fetches from the maker's site, each in its place: product lists, remote
descriptions, messages and lists of published categories. A signature that is there already gives way to the new
one. Needs the tool minisign. Changes nothing when VARDOCatalogCheck finds an error in FOLDER that is not about
signatures.

  --key FILE       the secret key that minisign made
  --days N         the signatures are good for so many days (default: 90)
  --site ADDRESS   FOLDER is published at ADDRESS. Without it, a product list that names its own address tells where
                   it is published.
  --help           this text
  --version        the version of the program

Exit status: 0 all is signed; 2 errors; 64 wrong usage.
)";

constexpr int USUAL_DAYS = 90;
constexpr int MOST_DAYS = 3650;

struct Options {
    FolderArguments arguments{};
    QString key{};
    int days = USUAL_DAYS;
    bool isHelp = false;
    bool isVersion = false;
    // Why the arguments make no sense; empty when they do.
    QString problem{};
};

// A file, and what it is to hold.
struct SignedFile {
    QString path;
    QByteArray contents;
};

QString ProblemOf(const Options& options) {
    if (options.isHelp || options.isVersion)
        return {};
    if (!QFileInfo(options.key).isFile())
        return QStringLiteral("--key takes the file of a secret key");
    if (options.days < 1 || options.days > MOST_DAYS)
        return QStringLiteral("--days takes a number from 1 to %1").arg(MOST_DAYS);
    return options.arguments.problem;
}

Options ReadOptions(const QStringList& arguments) {
    const QCommandLineOption key("key", {}, "FILE");
    const QCommandLineOption days("days", {}, "N", QString::number(USUAL_DAYS));
    const QCommandLineOption site("site", {}, "ADDRESS");
    const QCommandLineOption help(QStringList{"h", "help"});
    const QCommandLineOption version("version");
    QCommandLineParser parser;
    parser.addOptions({key, days, site, help, version});
    if (!parser.parse(arguments))
        return {.problem = parser.errorText()};
    Options options{.arguments = ReadFolder(parser.positionalArguments(), parser.value(site)),
                    .key = parser.value(key),
                    .days = parser.value(days).toInt(),
                    .isHelp = parser.isSet(help),
                    .isVersion = parser.isSet(version)};
    options.problem = ProblemOf(options);
    return options;
}

bool IsAboutSignatures(const FindingCode& code) {
    const std::string_view about[] = {Code::UNSIGNED_FILE.name, Code::SIGNED_ELSEWHERE.name,
                                      Code::SIGNATURE_OVER.name, Code::UNSIGNED_INSTALLER.name};
    return std::find(std::begin(about), std::end(about), code.name) != std::end(about);
}

// The errors that signing cannot mend.
CFindings ErrorsOf(const CCatalog& catalog) {
    CFindings errors;
    for (const Finding& finding : CheckCatalog(catalog).Sorted())
        if (finding.code.severity == Severity::ERROR && !IsAboutSignatures(finding.code))
            errors.Add(finding.file, finding.line, finding.code, finding.text);
    return errors;
}

// A line of standard input, which a terminal does not show.
QByteArray AskForPassword(std::ostream& err) {
    err << "Password of the secret key: " << std::flush;
    termios shown{};
    const bool isTerminal = tcgetattr(STDIN_FILENO, &shown) == 0;
    termios hidden = shown;
    hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    if (isTerminal)
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);
    std::string line;
    std::getline(std::cin, line);
    if (isTerminal)
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &shown);
    err << '\n';
    return QByteArray::fromStdString(line);
}

class CSigning {
public:
    CSigning(const CCatalog& catalog, const Options& options, std::ostream& err)
        : catalog_(catalog),
          tool_(options.key, CMinisignTool::NeedsPassword(options.key) ? AskForPassword(err) : QByteArray()),
          lastDay_(TodayInUtc().addDays(options.days).toString(QStringLiteral("yyyyMMdd"))) {}

    // What each published file is to hold; nothing when one cannot be signed.
    std::optional<std::vector<SignedFile>> SignAll() {
        std::vector<SignedFile> all;
        for (const auto& file : catalog_.GetFiles()) {
            const auto address = catalog_.PublishedAt(*file);
            if (!address)
                continue;
            const QByteArray contents = Sign(*file, *address);
            if (contents.isEmpty())
                return std::nullopt;
            all.push_back({file->GetPath(), contents});
        }
        if (all.empty())
            problem_ = QStringLiteral("nothing here is published, or --site is needed to tell where");
        return all.empty() ? std::nullopt : std::optional(all);
    }
    // Puts the signed files in their places. On failure some may be signed already, which does no harm.
    bool ReplaceAll(const std::vector<SignedFile>& files, std::ostream& out) {
        return std::all_of(files.begin(), files.end(), [&](const SignedFile& file) {
            const bool isReplaced = Replace(file);
            if (isReplaced)
                out << file.path.toStdString() << ": signed until " << lastDay_.toStdString() << '\n';
            else
                problem_ = QStringLiteral("\"%1\" cannot be written").arg(file.path);
            return isReplaced;
        });
    }
    const QString& GetProblem() const { return problem_; }

private:
    // Empty when that failed.
    QByteArray Sign(const CCatalogFile& file, const QString& address) {
        const CAtlStringA bytes = ReadFileBytes(file.GetFilePath());
        const std::string_view old = CCatalogueSeal::WithoutSignature({bytes.begin(), bytes.end()});
        QByteArray contents(old.data(), static_cast<qsizetype>(old.size()));
        if (!contents.endsWith('\n'))
            contents += '\n';
        const std::string path = CCatalogueSeal::PathOf(CAtlString(address));
        const auto signature = tool_.Sign(
            contents, QStringLiteral("path:%1 until:%2").arg(QString::fromStdString(path), lastDay_));
        if (!signature) {
            problem_ = QStringLiteral("minisign: ") + tool_.GetProblem();
            return {};
        }
        contents += QByteArray(CCatalogueSeal::COMMENT.data()) + '\n' + *signature + "-->\n";
        return IsGood(file, contents, address) ? contents : QByteArray();
    }
    // Whether installations with the keys of the folder, if there are any, will take it.
    bool IsGood(const CCatalogFile& file, const QByteArray& contents, const QString& address) {
        for (const CCatalogFile* key : catalog_.FilesOf(FileKind::PUBLIC_KEY)) {
            const CCatalogueSeal seal{CVardoDirectoryPath(CAtlString(key->GetFolder()))};
            if (seal.Judge({contents.data(), static_cast<std::size_t>(contents.size())}, CAtlString(address),
                           TodayInUtc()) == CCatalogueSeal::Judgement::GOOD)
                continue;
            problem_ = QStringLiteral(
                           "\"%1\": with this secret key, installations that have the key in \"%2\" "
                           "would refuse the file")
                           .arg(file.GetPath(), key->GetFolder());
            return false;
        }
        return true;
    }
    static bool Replace(const SignedFile& file) {
        QTemporaryFile temporary;
        struct stat status {};
        return stat(file.path.toLocal8Bit().constData(), &status) == 0 && temporary.open() &&
               temporary.write(file.contents) == file.contents.size() && temporary.flush() &&
               ReplaceFile(CVardoFilePath(CAtlString(temporary.fileName())),
                           CVardoFilePath(CAtlString(file.path)), status.st_mode & 07777U);
    }

    const CCatalog& catalog_;
    CMinisignTool tool_;
    // As it stands behind "until:".
    QString lastDay_;
    QString problem_;
};

int SignFolder(const Options& options, std::ostream& out, std::ostream& err) {
    const auto& [folder, siteAddress, siteFolder, problem] = options.arguments;
    const CCatalog catalog(folder, siteAddress, siteFolder);
    if (const CFindings errors = ErrorsOf(catalog); errors.Count(Severity::ERROR) > 0) {
        err << errors.ToText().toStdString() << "VARDOCatalogSign: nothing was signed\n";
        return EXIT_ERRORS;
    }
    CSigning signing(catalog, options, err);
    const auto files = signing.SignAll();
    if (files && signing.ReplaceAll(*files, out))
        return EXIT_CLEAN;
    err << "VARDOCatalogSign: " << signing.GetProblem().toStdString() << '\n'
        << (files ? "" : "VARDOCatalogSign: nothing was signed\n");
    return EXIT_ERRORS;
}

}  // namespace

int RunCatalogSign(const QStringList& arguments, std::ostream& out, std::ostream& err) {
    const Options options = ReadOptions(arguments);
    if (!options.problem.isEmpty())
        return RefuseUsage("VARDOCatalogSign", options.problem, USAGE, err);
    int status = EXIT_CLEAN;
    if (options.isHelp)
        out << USAGE << HELP;
    else if (options.isVersion)
        out << "VARDOCatalogSign " << VARDO_VERSION << '\n';
    else
        status = SignFolder(options, out, err);
    return Finish("VARDOCatalogSign", status, out, err);
}
