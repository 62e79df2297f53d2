// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/Checks.h"
#include "catalog/ElementChecks.h"
#include "catalog/FormatRules.h"
#include "products/GalleryVersion.h"

#include <algorithm>
#include <map>

namespace {

using namespace GalleryRules;

void CheckCategories(const CCatalogFile& file, const TiXmlElement& parent, CFindings& findings) {
    std::map<QString, int> lines;
    for (const TiXmlElement* category : Children(&parent, CATEGORY)) {
        const QString id = AttributeText(*category, ID);
        const auto [first, isNew] = lines.try_emplace(id, category->Row());
        if (!isNew && !id.isEmpty())
            findings.Add(file.GetPath(), category->Row(), Code::DUPLICATE_KEY,
                         QString("this category \"%1\" replaces that of line %2")
                             .arg(id, QString::number(first->second)));
        const CAtlString version = XmlAttribute(*category, VERSION);
        if (!GalleryVersion::ReadDate(version).isValid())
            findings.Add(file.GetPath(), AttributeLine(*category, VERSION), Code::NOT_A_DATE,
                         QString("version \"%1\" is no date of the form yyyy-MM-dd: it is compared as a text")
                             .arg(version.ToQString()));
    }
}

void CheckInstalled(const CCatalogFile& file, const CCatalog& catalog, CFindings& findings) {
    CheckElement(file, *file.GetRoot(), INSTALLED, findings);
    CheckCategories(file, *file.GetRoot(), findings);
    if (!GalleryVersion(catalog.GetEnvironment()).ReadInstalledCategories(file.GetFilePath()))
        findings.Add(file.GetPath(), file.GetRoot()->Row(), Code::MISSING_ELEMENT,
                     "there is no <category> with an id in the root: the content has no row");
}

// A published list is of use only to content that shares a category with it.
void CheckPublished(const CCatalogFile& file, const CCatalog& catalog, CFindings& findings) {
    const TiXmlElement& root = *file.GetRoot();
    CheckElement(file, root, PUBLISHED, findings);
    const TiXmlElement* categories = root.FirstChildElement(CATEGORIES);
    if (!categories) {
        findings.Add(file.GetPath(), root.Row(), Code::MISSING_ELEMENT,
                     "there is no <categories> in the root: the program rejects the file");
        return;
    }
    CheckCategories(file, *categories, findings);
    const auto installed = catalog.FilesOf(FileKind::INSTALLED_CATEGORIES);
    const bool isOfUse =
        installed.empty() || std::any_of(installed.begin(), installed.end(), [&](const CCatalogFile* list) {
            GalleryVersion gallery(catalog.GetEnvironment());
            return gallery.ReadInstalledCategories(list->GetFilePath()) &&
                   gallery.ReadPublishedCategories(ReadFileBytes(file.GetFilePath()));
        });
    if (!isOfUse)
        findings.Add(file.GetPath(), categories->Row(), Code::NO_COMMON_CATEGORY,
                     "none of these categories is an installed one: the program rejects the file");
}

}  // namespace

void CheckGalleries(const CCatalog& catalog, CFindings& findings) {
    for (const CCatalogFile* file : catalog.ReadableFilesOf(FileKind::INSTALLED_CATEGORIES))
        CheckInstalled(*file, catalog, findings);
    for (const CCatalogFile* file : catalog.ReadableFilesOf(FileKind::PUBLISHED_CATEGORIES))
        CheckPublished(*file, catalog, findings);
}
