// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/catalog/Checks.h"
#include "app/catalog/ElementChecks.h"
#include "app/catalog/FileKinds.h"
#include "app/catalog/ValueChecks.h"
#include "platform/Addresses.h"
#include "products/CProductVersion.h"
#include "products/DescriptionFormat.h"

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

// When the program would offer its own update: whether there is an installer to be fetched.
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
               {INSTALL_FOLDER.name, XmlValue::ADDRESS}, folder, findings);
    const CAtlString address = JoinTrimmed(folder, reader.GetUpdateInstallFile());
    CheckWholeAddress(place, address.ToQString(), findings);
    const auto installer = catalog.FileOf(address.ToQString());
    if (installer && !catalog.Find(*installer))
        findings.Add(
            place.file, place.line, Code::NO_INSTALLER,
            QStringLiteral("the program is offered this update, but there is no \"%1\"").arg(*installer));
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
