// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/Checks.h"
#include "catalog/ElementChecks.h"
#include "catalog/OfferBorders.h"
#include "catalog/ValueChecks.h"
#include "platform/files/CVardoDirectoryPath.h"
#include "platform/files/FileSystem.h"
#include "products/CProductVersion.h"
#include "products/DescriptionFormat.h"
#include "signing/CInstallerSeal.h"
#include "signing/CMinisignSignature.h"

#include <QFile>
#include <QUrl>
#include <set>

namespace {

using namespace DescriptionFormat;

QString Text(const std::string& text) {
    return QString::fromStdString(text);
}

// The rest of the only word with that beginning in the trusted comment, in quotes; "none" without such.
QString Said(const CMinisignSignature& signature, std::string_view beginning) {
    const auto word = signature.GetOnlyWord(beginning);
    return word ? '"' + Text(*word) + '"' : QString("none");
}

QString KeyNumbers(const CKeyFile& keys) {
    QStringList numbers;
    for (const CMinisignKey& key : keys.GetKeys())
        numbers << Text(MinisignFormat::ToText(key.GetId()));
    return numbers.join(QLatin1String(", "));
}

// Why the seal refused a signature, to follow the name of its file.
QString RefusalText(const CInstallerSeal& seal, const CUpdateXmlReader& reader) {
    using enum CInstallerSeal::Refusal;
    const auto& signature = seal.GetSignature();
    if (!signature)
        return "is no signature of minisign's";
    switch (seal.GetRefusal()) {
        case KEY:
            return QString("was made with the key %1, and the installations' is %2")
                .arg(Text(MinisignFormat::ToText(signature->GetKeyId())), KeyNumbers(seal.GetKeys()));
        case FILE_NAME:
            return QString("is for the file %1, and the offer's is \"%2\"")
                .arg(Said(*signature, "file:"),
                     CVardoFilePath(reader.GetUpdateInstallFile()).GetFileName().ToQString());
        case VERSION:
            return QString("is for the version %1, and the offer's is \"%2\"")
                .arg(Said(*signature, "version:"), reader.GetUpdateVersion().GetString().ToQString());
        case ARGUMENT:
            return QString("is for the argument %1, and the offer's is \"%2\"")
                .arg(Said(*signature, "argument:"),
                     QString::fromLatin1(QUrl::toPercentEncoding(reader.GetUpdateArgument().ToQString())));
        case LAST_DAY:
            return QString("was good until %1").arg(Said(*signature, "until:"));
        case NO_SIGNATURE:
        case NOTHING:
            break;
    }
    return {};
}

// Why an installation that holds the seal's key would not start the offered installer; empty when it would.
QString SignatureFault(const CCatalog& catalog, const CUpdateXmlReader& reader, const CCatalogFile& installer,
                       CInstallerSeal& seal) {
    const CAtlString address = reader.GetInstallerAddress() + CInstallerSeal::SIGNATURE_EXTENSION;
    const auto path = catalog.FileOf(address.ToQString());
    const CCatalogFile* signature = path ? catalog.Find(*path) : nullptr;
    if (!signature)
        return QString("there is no \"%1\"").arg(path.value_or(address.ToQString()));
    const CAtlStringA bytes = ReadFileBytes(signature->GetFilePath());
    if (!seal.Accept({bytes.begin(), bytes.end()}, SealedOffer(reader.GetTable().ChooseOffer())))
        return QString("\"%1\" %2").arg(signature->GetPath(), RefusalText(seal, reader));
    off_t size = 0;
    const bool isSigned =
        seal.IsOf(FileSystem::OpenForReading(installer.GetFilePath().GetFilePathString(), size));
    return isSigned ? QString()
                    : QString("\"%1\" is not what was signed with \"%2\"")
                          .arg(installer.GetPath(), signature->GetPath());
}

// Whether only installations older than the local description get the reader's offer.
bool IsForOlderOnes(const CUpdateXmlReader& reader, const CCatalogFile& local) {
    CProductVersion newest(local.GetFilePath());
    const CVersionStringRange* range = reader.GetTable().ChooseRange();
    return range && newest.LoadLocal() && range->GetTo().IsLess(newest.GetCurrentVersion());
}

// Checks as an installation does, which needs a signature once the key lies beside its own description.
void CheckSignature(const CCatalog& catalog, const CUpdateXmlReader& reader, const CCatalogFile& local,
                    const CCatalogFile& installer, const Place& place, CFindings& findings) {
    const CVardoDirectoryPath folder{CAtlString(local.GetFolder())};
    const CVardoFilePath key = CVardoDirectoryPath::Combine(folder, CInstallerSeal::KEY_FILE);
    CInstallerSeal seal(key);
    if (!seal.IsRequired())
        return;
    const QString fault = SignatureFault(catalog, reader, installer, seal);
    if (fault.isEmpty())
        return;
    const bool isOfOldKey =
        seal.GetRefusal() == CInstallerSeal::Refusal::KEY && IsForOlderOnes(reader, local);
    findings.Add(place.file, place.line, isOfOldKey ? Code::OLDER_KEY : Code::UNSIGNED_INSTALLER,
                 QString("installations with the key \"%1\" refuse this update: %2")
                     .arg(key.GetFilePathString().ToQString(), fault));
}

// The system starts (execve(2)) its own programs, and scripts that name their interpreter.
void CheckBeginning(const CCatalogFile& installer, const Place& place, CFindings& findings) {
    QFile file(installer.GetPath());
    file.open(QIODevice::ReadOnly);
    const QByteArray beginning = file.read(4);
    if (!beginning.startsWith("#!") && beginning !=
                                           "\x7F"
                                           "ELF")
        findings.Add(place.file, place.line, Code::NOT_STARTABLE,
                     QString("\"%1\" begins with neither \"#!\" nor an ELF header: no system starts it")
                         .arg(installer.GetPath()));
}

// The element of the reader's offer.
const TiXmlElement& OfferElement(const CUpdateXmlReader& reader, const CCatalogFile& remote) {
    const TiXmlElement* element = remote.GetRoot()->FirstChildElement(PRODUCT);
    const TiXmlElement& product = element ? *element : *remote.GetRoot();
    const CVersionStringRange* chosen = reader.GetTable().ChooseRange();
    for (const TiXmlElement* range : Children(product.FirstChildElement(COMPATIBILITY), RANGE))
        if (const TiXmlElement* offer = range->FirstChildElement(PRODUCT);
            offer && chosen &&
            chosen->IsEqual({CVersionString(XmlAttribute(*range, VERSION_FROM)),
                             CVersionString(XmlAttribute(*range, VERSION_TO))}))
            return *offer;
    return product;
}

}  // namespace

void CheckInstaller(const CCatalog& catalog, const CUpdateXmlReader& reader, const CCatalogFile& local,
                    const CCatalogFile& remote, CFindings& findings) {
    const TiXmlElement& product = OfferElement(reader, remote);
    const Place place{remote.GetPath(), AttributeLine(product, INSTALL_FILE)};
    const CAtlString folder = reader.GetUpdateInstallURL();
    if (folder.IsEmpty() || reader.GetUpdateInstallFile().IsEmpty()) {
        findings.Add(place.file, place.line, Code::NO_INSTALLER,
                     "the program is offered this update, but UpdateInstallURL or UpdateInstallFile "
                     "is missing: it cannot be installed");
        return;
    }
    CheckValue({remote.GetPath(), AttributeLine(product, INSTALL_FOLDER)},
               {INSTALL_FOLDER, XmlValue::ADDRESS}, folder, findings);
    const QString address = reader.GetInstallerAddress().ToQString();
    CheckWholeAddress(place, address, findings);
    const auto path = catalog.FileOf(address);
    const CCatalogFile* installer = path ? catalog.Find(*path) : nullptr;
    if (installer) {
        CheckBeginning(*installer, place, findings);
        CheckSignature(catalog, reader, local, *installer, place, findings);
    } else if (path) {
        findings.Add(place.file, place.line, Code::NO_INSTALLER,
                     QString("the program is offered this update, but there is no \"%1\"").arg(*path));
    } else if (CanBeFetched(address)) {
        findings.Add(place.file, place.line, Code::ODD_HOST,
                     QString("the installer \"%1\" does not belong to the site of this folder: it was "
                             "not looked at")
                         .arg(address));
    }
}

void CheckInstallers(const CCatalog& catalog, CFindings& findings) {
    for (const Reference& reference : catalog.GetReferences()) {
        const CCatalogFile* remote = catalog.FileAt(reference.address);
        CProductVersion reader(reference.from->GetFilePath());
        if (reference.from->GetName() != QString::fromWCharArray(OWN_FILE) || !remote || !remote->GetRoot() ||
            !reader.LoadLocal() || !reader.ParseRemote(ReadFileBytes(remote->GetFilePath())))
            continue;
        const CVersionString local = reader.GetCurrentVersion();
        auto versions = OfferBorders(reader.GetTable());
        versions.insert({CVersionString(L"0.0.0.0"), local});
        std::set<const CUpdateEntry*> seen;
        for (const CVersionString& installed : versions) {
            reader.SetCurrentVersion(installed);
            const CUpdateEntry& offer = reader.GetTable().ChooseOffer();
            // A version that the installed description has already may be without an installer for all.
            const bool isNews = reader.GetTable().ChooseRange() || offer.version.IsGreater(local);
            if (isNews && reader.IsUpdateAvailable() && seen.insert(&offer).second)
                CheckInstaller(catalog, reader, *reference.from, *remote, findings);
        }
    }
}
