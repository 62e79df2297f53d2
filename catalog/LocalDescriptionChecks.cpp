// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/Checks.h"
#include "catalog/ElementChecks.h"
#include "catalog/FormatRules.h"
#include "platform/files/CFolderListing.h"
#include "products/CProductVersion.h"
#include "products/CProductVersions.h"

#include <algorithm>
#include <set>

namespace {

using namespace DescriptionRules;

void CheckLocal(const CCatalogFile& file, CFindings& findings) {
    const TiXmlElement& root = *file.GetRoot();
    CheckElement(file, root, LOCAL, findings);
    if (!root.FirstChildElement(PRODUCT))
        findings.Add(file.GetPath(), root.Row(), Code::MISSING_ELEMENT,
                     "there is no <Product> in the root: the program skips the file");
    else if (const QString value = AttributeText(*root.FirstChildElement(PRODUCT), NO_UPDATES);
             !value.isEmpty() && value != QLatin1String("true") && value != QLatin1String("false"))
        findings.Add(file.GetPath(), AttributeLine(*root.FirstChildElement(PRODUCT), NO_UPDATES),
                     Code::BAD_VALUE, QString("NoUpdates \"%1\" is read as \"false\"").arg(value));
    CProductVersion reader(file.GetFilePath());
    if (!reader.LoadLocal() && findings.CountErrors(file.GetPath()) == 0)
        findings.Add(file.GetPath(), root.Row(), Code::REJECTED, "the program skips the file");
}

// The base names of the products of all lists.
std::set<QString> BaseNames(const CCatalog& catalog) {
    std::set<QString> names;
    for (const CCatalogFile* list : catalog.FilesOf(FileKind::PRODUCT_LIST))
        for (const TiXmlElement* product : Children(list->GetRoot(), ListFormat::PRODUCT))
            names.insert(AttributeText(*product, ListFormat::BASE_XML));
    names.erase(QString());
    return names;
}

// Finds two descriptions of one version among those of one product in one folder.
void CheckVersions(std::vector<CVardoFilePath> files, CFindings& findings) {
    std::sort(files.begin(), files.end(), [](const CVardoFilePath& a, const CVardoFilePath& b) {
        return a.GetFilePathString().Compare(b.GetFilePathString()) < 0;
    });
    std::vector<std::pair<CVersionString, CVardoFilePath>> known;
    for (const CVardoFilePath& file : files) {
        CProductVersion reader(file);
        if (!reader.LoadLocal())
            continue;
        const auto same = std::find_if(known.begin(), known.end(), [&](const auto& other) {
            return reader.GetCurrentVersion().IsEqual(other.first);
        });
        if (same == known.end())
            known.emplace_back(reader.GetCurrentVersion(), file);
        else
            findings.Add(file.GetFilePathString().ToQString(), 0, Code::SAME_VERSION,
                         QString("\"%1\" has the same version: the program ignores one of both")
                             .arg(same->second.GetFileName().ToQString()));
    }
}

// Reports a description that no list leads to, with the base name that differs in case only, if there is one.
void AddUnlisted(const CCatalogFile& file, const std::set<QString>& bases, CFindings& findings) {
    for (const QString& base : bases)
        if (file.GetName().startsWith(base, Qt::CaseInsensitive) &&
            CProductVersions::IsDescriptionFile(CAtlString(base), file.GetFilePath()))
            return findings.Add(file.GetPath(), 0, Code::WRONG_CASE,
                                QString("the name differs in case only from one of \"%1\", a BaseXml "
                                        "of a product list: the program does not read the file")
                                    .arg(base));
    findings.Add(file.GetPath(), 0, Code::UNLISTED,
                 "no product list here has a BaseXml that leads to this description");
}

void CheckAgainstLists(const CCatalog& catalog, CFindings& findings) {
    const std::set<QString> bases = BaseNames(catalog);
    if (bases.empty())
        return;
    std::set<QString> folders;
    std::set<QString> listed;
    const auto files = catalog.FilesOf(FileKind::LOCAL_DESCRIPTION);
    for (const CCatalogFile* file : files)
        folders.insert(file->GetFolder());
    for (const QString& folder : folders) {
        const CFolderListing listing{CVardoDirectoryPath(CAtlString(folder))};
        for (const QString& base : bases) {
            std::vector<CVardoFilePath> found;
            listing.ListFiles(CAtlString(base), L".xml", found);
            std::erase_if(found, [&](const CVardoFilePath& file) {
                return !CProductVersions::IsDescriptionFile(CAtlString(base), file);
            });
            for (const CVardoFilePath& file : found)
                listed.insert(file.GetFilePathString().ToQString());
            CheckVersions(found, findings);
        }
    }
    for (const CCatalogFile* file : files)
        if (!listed.contains(file->GetPath()) && file->GetName() != QString::fromWCharArray(OWN_FILE))
            AddUnlisted(*file, bases, findings);
}

}  // namespace

void CheckLocalDescriptions(const CCatalog& catalog, CFindings& findings) {
    for (const CCatalogFile* file : catalog.ReadableFilesOf(FileKind::LOCAL_DESCRIPTION))
        CheckLocal(*file, findings);
    CheckAgainstLists(catalog, findings);
}
