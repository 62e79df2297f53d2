// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/Checks.h"
#include "catalog/ElementChecks.h"
#include "catalog/FileKinds.h"
#include "catalog/ValueChecks.h"
#include "platform/files/CVardoDirectoryPath.h"
#include "platform/files/FileSystem.h"
#include "products/CProductVersion.h"
#include "products/DescriptionFormat.h"
#include "signing/CInstallerSeal.h"
#include "signing/LastDay.h"

#include <QUrl>

namespace {

using namespace DescriptionFormat;

void CheckReference(const CCatalog& catalog, const Reference& reference, CFindings& findings) {
    const Place place{reference.from->GetPath(), reference.line};
    CheckWholeAddress(place, reference.address, findings);
    if (!catalog.HasSite())
        return;
    const auto path = catalog.FileOf(reference.address);
    if (!path)
        findings.Add(place.file, place.line, Code::ELSEWHERE,
                     QStringLiteral("\"%1\" does not belong to the site of this folder: it was not followed")
                         .arg(reference.address));
    else if (!catalog.Find(*path))
        findings.Add(place.file, place.line, Code::MISSING_FILE,
                     QStringLiteral("\"%1\" leads to nothing: there is no \"%2\" to be read as %3")
                         .arg(reference.address, *path, KindName(reference.kind)));
}

// What a trusted comment must hold for an argument.
QString ArgumentWord(const CAtlString& argument) {
    return argument.IsEmpty() ? QString()
                              : QLatin1String(" argument:") + QUrl::toPercentEncoding(argument.ToQString());
}

// Why an installation that holds the seal's key would not start the offered installer; empty when it would.
QString SignatureFault(const CCatalog& catalog, const CUpdateXmlReader& reader, const CCatalogFile& installer,
                       CInstallerSeal& seal) {
    const CAtlString address = reader.GetInstallerAddress() + CInstallerSeal::SIGNATURE_EXTENSION;
    const auto path = catalog.FileOf(address.ToQString());
    const CCatalogFile* signature = path ? catalog.Find(*path) : nullptr;
    if (!signature)
        return QStringLiteral("there is no \"%1\"").arg(path.value_or(address.ToQString()));
    const CAtlStringA bytes = ReadFileBytes(signature->GetFilePath());
    const CAtlString file = reader.GetUpdateInstallFile();
    const CInstallerSeal::Offer offer{
        .file = file,
        .argument = reader.GetUpdateArgument(),
        .isVersion = [&reader](const CAtlString& version) { return reader.IsUpdateVersion(version); },
        .today = TodayInUtc()};
    if (!seal.Accept({bytes.begin(), bytes.end()}, offer))
        return QStringLiteral("\"%1\" is no signature with that key for \"file:%2 version:%3%4\"")
            .arg(signature->GetPath(), CVardoFilePath(file).GetFileName().ToQString(),
                 reader.GetUpdateVersion().GetString().ToQString(), ArgumentWord(offer.argument));
    off_t size = 0;
    const bool isSigned =
        seal.IsOf(FileSystem::OpenForReading(installer.GetFilePath().GetFilePathString(), size));
    return isSigned ? QString()
                    : QStringLiteral("\"%1\" is not what was signed with \"%2\"")
                          .arg(installer.GetPath(), signature->GetPath());
}

// As an installation does, which needs a signature once the key lies beside its own description.
void CheckSignature(const CCatalog& catalog, const CProductVersion& reader, const CCatalogFile& local,
                    const CCatalogFile& installer, const Place& place, CFindings& findings) {
    const CVardoDirectoryPath folder{CAtlString(local.GetFolder())};
    const CVardoFilePath key = CVardoDirectoryPath::Combine(folder, CInstallerSeal::KEY_FILE);
    CInstallerSeal seal(key);
    if (!seal.IsRequired())
        return;
    if (const QString fault = SignatureFault(catalog, reader, installer, seal); !fault.isEmpty())
        findings.Add(place.file, place.line, Code::UNSIGNED_INSTALLER,
                     QStringLiteral("installations with the key \"%1\" refuse this update: %2")
                         .arg(key.GetFilePathString().ToQString(), fault));
}

// When the program would offer its own update: whether there is an installer to be fetched, and to be
// started.
void CheckInstaller(const CCatalog& catalog, const Reference& reference, CFindings& findings) {
    const auto path = catalog.FileOf(reference.address);
    const CCatalogFile* remote = path ? catalog.Find(*path) : nullptr;
    CProductVersion reader(reference.from->GetFilePath());
    if (!remote || !remote->GetRoot() || !reader.LoadLocal() ||
        !reader.ParseRemote(ReadFileBytes(remote->GetFilePath())) || !reader.IsUpdateAvailable())
        return;
    const TiXmlElement* element = remote->GetRoot()->FirstChildElement(PRODUCT);
    const TiXmlElement& product = element ? *element : *remote->GetRoot();
    const Place place{remote->GetPath(), AttributeLine(product, INSTALL_FILE)};
    const CAtlString folder = reader.GetUpdateInstallURL();
    if (folder.IsEmpty() || reader.GetUpdateInstallFile().IsEmpty()) {
        findings.Add(
            place.file, place.line, Code::NO_INSTALLER,
            QStringLiteral("the program is offered this update, but UpdateInstallURL or UpdateInstallFile "
                           "is missing: it cannot be installed"));
        return;
    }
    CheckValue({remote->GetPath(), AttributeLine(product, INSTALL_FOLDER)},
               {INSTALL_FOLDER, XmlValue::ADDRESS}, folder, findings);
    const QString address = reader.GetInstallerAddress().ToQString();
    CheckWholeAddress(place, address, findings);
    const auto installerPath = catalog.FileOf(address);
    const CCatalogFile* installer = installerPath ? catalog.Find(*installerPath) : nullptr;
    if (installer)
        CheckSignature(catalog, reader, *reference.from, *installer, place, findings);
    else if (installerPath)
        findings.Add(
            place.file, place.line, Code::NO_INSTALLER,
            QStringLiteral("the program is offered this update, but there is no \"%1\"").arg(*installerPath));
}

}  // namespace

void CheckReferences(const CCatalog& catalog, CFindings& findings) {
    if (const auto& references = catalog.GetReferences(); !catalog.HasSite() && !references.empty())
        findings.Add(
            references.front().from->GetPath(), references.front().line, Code::ELSEWHERE,
            QStringLiteral("nothing here tells which folder is the site (--site would): this address "
                           "and %1 others were not followed")
                .arg(references.size() - 1));
    for (const Reference& reference : catalog.GetReferences()) {
        CheckReference(catalog, reference, findings);
        if (reference.from->GetName() == QString::fromWCharArray(OWN_FILE))
            CheckInstaller(catalog, reference, findings);
    }
}
