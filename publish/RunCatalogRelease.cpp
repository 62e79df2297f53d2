// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "publish/FolderProgram.h"

#include "catalog/Checks.h"
#include "platform/files/Addresses.h"
#include "platform/files/CVardoDirectoryPath.h"
#include "platform/files/FileSystem.h"
#include "platform/text/PrintableText.h"
#include "products/CProductVersion.h"
#include "products/DescriptionFormat.h"
#include "publish/CCatalogSigning.h"
#include "publish/NewProduct.h"
#include "signing/CInstallerSeal.h"
#include "signing/CMinisignSignature.h"

#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <algorithm>
#include <ostream>

namespace {

constexpr const char* USAGE =
    "usage: VARDOCatalogRelease [--installer-key FILE] [--key FILE] [--days N] [--site ADDRESS[=FOLDER]] "
    "FOLDER\n"
    "       VARDOCatalogRelease --new [--site ADDRESS[=FOLDER]] NAME KEY VERSION FOLDER\n";

constexpr const char* HELP = R"(
Makes what lies in FOLDER ready to be published: signs the program's installer, for the file, the version and the
argument that its description offers, and then every file that VARDO Product Update fetches, product lists last.
Names the files in the order in which to upload them. Needs the tool minisign. Changes nothing when
VARDOCatalogCheck finds an error in FOLDER that is not about signatures.

  --installer-key FILE  the secret key for the installer; without it the installer keeps its signature
  --key FILE            the secret key for the other files; without it they stay as they are
  --days N              their signatures are good for so many days (default: 90)
  --site ADDRESS[=FOLDER]
                        FOLDER, or the folder in it that is named here, is published at ADDRESS. Without it, a
                        product list that names its own address tells where it is published.
  --new                 writes the descriptions of a new product, and the product list if there is none
  --help                this text
  --version             the version of the program

Exit status: 0 all is done; 2 errors; 64 wrong usage.
)";

constexpr ProgramTexts TEXTS{"VARDOCatalogRelease", USAGE, HELP};

struct Options {
    FolderArguments arguments{};
    QString installerKey{};
    QString key{};
    int days = CCatalogSigning::USUAL_DAYS;
    std::optional<NewProduct> product{};
};

QString ProblemOf(const Options& options) {
    if (options.product)
        return options.product->problem.isEmpty() ? options.arguments.problem : options.product->problem;
    if (options.key.isEmpty() && options.installerKey.isEmpty())
        return "there must be --installer-key, --key or both";
    for (const QString& key : {options.key, options.installerKey})
        if (!key.isEmpty() && !QFileInfo(key).isFile())
            return QString("\"%1\" is no file of a secret key").arg(key);
    const QString problem = CCatalogSigning::DaysProblem(options.days);
    return problem.isEmpty() ? options.arguments.problem : problem;
}

Options ReadOptions(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.addOptions(FolderOptions());
    parser.addOptions({{"installer-key", {}, "FILE"},
                       {"key", {}, "FILE"},
                       {"days", {}, "N", QString::number(CCatalogSigning::USUAL_DAYS)},
                       {"new", {}}});
    if (!parser.parse(arguments))
        return {.arguments = {.problem = parser.errorText()}};
    QStringList others = parser.positionalArguments();
    std::optional<NewProduct> product;
    if (parser.isSet("new"))
        product = TakeNewProduct(others);
    Options options{.arguments = TakeFolder(parser, others),
                    .installerKey = parser.value("installer-key"),
                    .key = parser.value("key"),
                    .days = parser.value("days").toInt(),
                    .product = product};
    options.arguments.problem = ProblemOf(options);
    return options;
}

// Signs the installers that the program's own description offers.
class CInstallerSigning {
public:
    CInstallerSigning(const CCatalog& catalog, std::unique_ptr<CMinisignTool> tool)
        : catalog_(catalog), tool_(std::move(tool)) {}

    // The signatures; nothing when one cannot be made. A range offers an older release, which keeps its
    // signature for installations with the old key.
    std::optional<std::vector<SignedFile>> SignAll() {
        std::vector<SignedFile> signatures;
        for (const Reference& reference : catalog_.GetReferences())
            if (reference.from->GetName() == QString::fromWCharArray(DescriptionFormat::OWN_FILE))
                if (const auto path = catalog_.FileOf(reference.address);
                    path && !SignOffersOf(*path, *reference.from, signatures))
                    return std::nullopt;
        if (!signatures.empty())
            return signatures;
        problem_ =
            "no VardoProductUpdate.xml of an installation is here, which tells where the "
            "program's own description is published; or it has NoUpdates, or names another site";
        return std::nullopt;
    }
    const QString& GetProblem() const { return problem_; }

private:
    // Adds the signatures of what the description at path offers the installation; false, with the problem,
    // when one cannot be made.
    bool SignOffersOf(const QString& path, const CCatalogFile& installed,
                      std::vector<SignedFile>& signatures) {
        CProductVersion reader(installed.GetFilePath());
        if (!reader.ParseRemote(ReadFileBytes(CVardoFilePath(CAtlString(path))))) {
            problem_ = QString("the program's own description, \"%1\", cannot be read").arg(path);
            return false;
        }
        const CVardoDirectoryPath folder{CAtlString(installed.GetFolder())};
        if (!Sign(reader.GetTable().GetDefaultOffer(), folder, signatures))
            return false;
        for (const auto& [range, offer] : reader.GetTable().GetRangedOffers())
            if (const auto installer = PathOf(offer);
                installer && (comments_.contains(*installer) || !catalog_.Find(SignatureOf(*installer))) &&
                (!Sign(offer, folder, signatures) || !KeepsKey(*installer, signatures)))
                return false;
        return true;
    }

    // Older installations, which a range is for, may know only the key of the signature that is there.
    bool KeepsKey(const QString& installer, const std::vector<SignedFile>& signatures) {
        const QString path = SignatureOf(installer);
        const CAtlStringA old = ReadFileBytes(CVardoFilePath(CAtlString(path)));
        const auto made = std::find_if(signatures.begin(), signatures.end(),
                                       [&](const SignedFile& file) { return file.path == path; });
        const auto before = CMinisignSignature::Parse({old.begin(), old.end()});
        const auto now = CMinisignSignature::Parse(made->contents.toStdString());
        if (before && now && before->GetKeyId() != now->GetKeyId())
            problem_ = QString(
                           "\"%1\" is of another key, which the older installations of a Range may need; "
                           "leave out --installer-key, or remove the file")
                           .arg(path);
        return problem_.isEmpty();
    }

    std::optional<QString> PathOf(const CUpdateEntry& offer) const {
        return catalog_.FileOf(JoinTrimmed(offer.installUrl, offer.installFile).ToQString());
    }

    static QString SignatureOf(const QString& path) {
        return path + QString::fromWCharArray(CInstallerSeal::SIGNATURE_EXTENSION);
    }

    bool Sign(const CUpdateEntry& offer, const CVardoDirectoryPath& folder,
              std::vector<SignedFile>& signatures) {
        const auto path = PathOf(offer);
        if (offer.installFile.IsEmpty() || !path || !catalog_.Find(*path)) {
            problem_ =
                QString("there is no installer \"%1\" of version %2")
                    .arg(path.value_or(offer.installFile.ToQString()), offer.version.GetString().ToQString());
            return false;
        }
        // Blanks separate the words of a trusted comment.
        static const QRegularExpression blank("\\s");
        if (CVardoFilePath(offer.installFile).GetFileName().ToQString().contains(blank)) {
            problem_ =
                QString("no program accepts a signature for \"%1\", whose name holds a blank").arg(*path);
            return false;
        }
        const QString comment =
            CInstallerSeal::CommentFor(offer.installFile, offer.version.GetString(), offer.argument);
        if (comments_.contains(*path)) {
            if (comments_.value(*path) != comment)
                problem_ =
                    QString("two offers of \"%1\" differ in version or argument; give each a file of its own")
                        .arg(*path);
            return problem_.isEmpty();
        }
        comments_.insert(*path, comment);
        const auto signature = tool_->SignFile(*path, comment);
        if (!signature)
            problem_ = QString("minisign: ") + tool_->GetProblem();
        else if (IsGood(*path, *signature, offer, folder))
            signatures.push_back(
                {SignatureOf(*path), *signature,
                 QString("%1\n%2: signed\n").arg(Printable(*path), Printable(SignatureOf(*path)))});
        return problem_.isEmpty();
    }

    // Whether installations with the key of the folder, if there is one, will accept it.
    bool IsGood(const QString& path, const QByteArray& signature, const CUpdateEntry& offer,
                const CVardoDirectoryPath& folder) {
        CInstallerSeal seal(CVardoDirectoryPath::Combine(folder, CInstallerSeal::KEY_FILE));
        off_t size = 0;
        if (!seal.IsRequired() || (seal.Accept({signature.data(), static_cast<std::size_t>(signature.size())},
                                               SealedOffer(offer)) &&
                                   seal.IsOf(FileSystem::OpenForReading(CAtlString(path), size))))
            return true;
        problem_ = QString(
                       "\"%1\": with this secret key, installations that have the key in \"%2\" would "
                       "refuse the installer")
                       .arg(path, folder.GetDirectoryPathString().ToQString());
        return false;
    }

    const CCatalog& catalog_;
    std::unique_ptr<CMinisignTool> tool_;
    // The trusted comments of the installers that were signed, by their paths.
    QMap<QString, QString> comments_;
    QString problem_;
};

// Signs everything before it writes anything. The files written first have no effect without the rest.
int SignAll(const Options& options, std::ostream& out, std::ostream& err) {
    const CCatalog catalog = options.arguments.Read();
    if (const QString obstacle = CCatalogSigning::Obstacle(catalog, err); !obstacle.isEmpty())
        return Fail(TEXTS, obstacle, err);
    std::optional<std::vector<SignedFile>> all(std::in_place);
    if (!options.installerKey.isEmpty()) {
        CInstallerSigning installers(catalog, CMinisignTool::WithPassword(options.installerKey, err));
        all = installers.SignAll();
        if (!all)
            return Fail(TEXTS, installers.GetProblem() + "; nothing was signed", err);
    }
    if (!options.key.isEmpty()) {
        CCatalogSigning signing(catalog, CMinisignTool::WithPassword(options.key, err), options.days);
        const auto files = signing.SignAll();
        if (!files)
            return Fail(TEXTS, signing.GetProblem() + "; nothing was signed", err);
        all->insert(all->end(), files->begin(), files->end());
    }
    const QString failure = CCatalogSigning::ReplaceAll(*all, out);
    return failure.isEmpty() ? EXIT_CLEAN : Fail(TEXTS, failure, err);
}

// What is still wrong when all is signed; the status for it.
int CheckAfterwards(const Options& options, std::ostream& err) {
    const CFindings findings = CheckCatalog(options.arguments.Read()).WithoutNotes();
    err << findings.ToText().toStdString();
    return findings.Count(Severity::ERROR) > 0 ? EXIT_ERRORS : EXIT_CLEAN;
}

int AddProduct(const NewProduct& product, const Options& options, std::ostream& out, std::ostream& err) {
    const QString problem = WriteNewProduct(product, options.arguments, out);
    return problem.isEmpty() ? EXIT_CLEAN : Fail(TEXTS, problem, err);
}

int Release(const Options& options, std::ostream& out, std::ostream& err) {
    if (options.product)
        return AddProduct(*options.product, options, out, err);
    const int status = SignAll(options, out, err);
    return status == EXIT_CLEAN ? CheckAfterwards(options, err) : status;
}

}  // namespace

int RunCatalogRelease(const QStringList& arguments, std::ostream& out, std::ostream& err) {
    const Options options = ReadOptions(arguments);
    return RunProgram(
        TEXTS, options.arguments, [&] { return Release(options, out, err); }, out, err);
}
