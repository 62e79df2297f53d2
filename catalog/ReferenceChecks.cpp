// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/Checks.h"
#include "catalog/ElementChecks.h"
#include "catalog/FileKinds.h"
#include "catalog/ValueChecks.h"

#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <algorithm>
#include <map>
#include <set>

namespace {

// For a missing file, names the file that may be meant.
QString CaseHint(const CCatalog& catalog, const QString& path) {
    const CCatalogFile* other = catalog.FindInOtherCase(path);
    return other ? QString("; \"%1\" differs in case only").arg(other->GetPath()) : QString();
}

// In English, with its article; the kind is one that a reference leads to.
QString KindName(FileKind kind) {
    switch (kind) {
        case FileKind::PRODUCT_LIST:
            return "a product list";
        case FileKind::REMOTE_DESCRIPTION:
            return "a remote description";
        case FileKind::MESSAGE:
            return "a notification's message";
        default:
            return "a list of published categories";
    }
}

void CheckReference(const CCatalog& catalog, const Reference& reference, CFindings& findings) {
    const Place place{reference.from->GetPath(), reference.line};
    CheckWholeAddress(place, reference.address, findings);
    const auto path = catalog.FileOf(reference.address);
    if (path && !catalog.Find(*path) && QFileInfo(*path).isFile())
        findings.Add(
            place.file, place.line, Code::MISSING_FILE,
            QString("\"%1\" leads to \"%2\" through a linked or hidden folder, which is not looked into")
                .arg(reference.address, *path));
    else if (path && !catalog.Find(*path))
        findings.Add(place.file, place.line, Code::MISSING_FILE,
                     QString("\"%1\" leads to nothing: there is no \"%2\" to be read as %3%4")
                         .arg(reference.address, *path, KindName(reference.kind), CaseHint(catalog, *path)));
}

// Reports each missing page of the site once.
void CheckPages(const CCatalog& catalog, CFindings& findings) {
    std::set<QString> missing;
    for (const Reference& link : catalog.GetLinks()) {
        const auto path = link.kind == FileKind::PAGE ? catalog.FileOf(link.address) : std::nullopt;
        if (path && !catalog.Find(*path) && !catalog.HasFolder(*path) && missing.insert(*path).second)
            findings.Add(link.from->GetPath(), link.line, Code::MISSING_PAGE,
                         QString("the page \"%1\" leads to nothing: there is no \"%2\"%3")
                             .arg(link.address, *path, CaseHint(catalog, *path)));
    }
}

// The list, or apparent list, that may be why no address could be followed.
const CCatalogFile* OddList(const CCatalog& catalog) {
    const auto lists = catalog.FilesOf(FileKind::PRODUCT_LIST);
    const auto odd = std::find_if(lists.begin(), lists.end(), [](const CCatalogFile* list) {
        return KindByName(list->GetName()) != FileKind::PRODUCT_LIST;
    });
    if (odd != lists.end())
        return *odd;
    return lists.empty() ? nullptr : lists.front();
}

// Whether any address belongs to the site; adds a finding when there are only others.
bool CheckFollowed(const CCatalog& catalog, CFindings& findings) {
    const auto& references = catalog.GetReferences();
    if (std::any_of(references.begin(), references.end(),
                    [&](const Reference& reference) { return catalog.FileOf(reference.address); }))
        return true;
    if (references.empty())
        return false;
    const CCatalogFile* list = OddList(catalog);
    findings.Add(list ? list->GetPath() : references.front().from->GetPath(),
                 list ? 0 : references.front().line, Code::NOT_FOLLOWED,
                 catalog.GetSite()
                     ? QString("no address in this folder belongs to the site: none was followed")
                     : QString("no list here has a Url that ends in its own name, so nothing tells "
                               "which folder is the site (--site would): no address was followed"));
    return false;
}

// Without a site, reports a list whose own address ends in a name that no file here has.
void CheckOwnAddresses(const CCatalog& catalog, CFindings& findings) {
    for (const Reference& reference : catalog.GetReferences()) {
        const QString name = reference.address.section(u'/', -1);
        const auto& files = catalog.GetFiles();
        if (reference.kind == FileKind::PRODUCT_LIST &&
            std::none_of(files.begin(), files.end(),
                         [&](const auto& file) { return file->GetName() == name; }))
            findings.Add(reference.from->GetPath(), reference.line, Code::MISSING_FILE,
                         QString("\"%1\" leads to nothing: no file here is named \"%2\"%3")
                             .arg(reference.address, name,
                                  CaseHint(catalog, reference.from->GetFolder() + u'/' + name)));
    }
}

QString HostOf(const QString& address) {
    const QUrl url(address);
    return QString("%1:%2").arg(url.host()).arg(url.port(80));
}

// The host and port that a single address has, while all others share another; empty otherwise.
QString OddHost(const std::vector<Reference>& references) {
    std::map<QString, std::set<QString>> addresses;
    for (const Reference& reference : references)
        if (CanBeFetched(reference.address))
            addresses[HostOf(reference.address)].insert(reference.address);
    if (addresses.size() != 2)
        return {};
    for (auto one = addresses.begin(), other = std::next(one); one != addresses.end();
         other = addresses.begin(), ++one)
        if (one->second.size() == 1 && other->second.size() > 1)
            return one->first;
    return {};
}

void CheckElsewhere(const CCatalog& catalog, CFindings& findings) {
    const QString odd = OddHost(catalog.GetReferences());
    for (const Reference& reference : catalog.GetReferences()) {
        const bool isOdd = HostOf(reference.address) == odd;
        if (!CanBeFetched(reference.address) || (!isOdd && catalog.FileOf(reference.address)))
            continue;
        findings.Add(reference.from->GetPath(), reference.line, isOdd ? Code::ODD_HOST : Code::ELSEWHERE,
                     isOdd ? QString("\"%1\" alone has this host and port: all other addresses have another")
                                 .arg(reference.address)
                           : QString("\"%1\" does not belong to the site of this folder: it was not followed")
                                 .arg(reference.address));
    }
}

// Adds a folder and those above it, up to the site's own.
void AddFolders(const CSite& site, QString folder, std::set<QString>& folders) {
    while ((folder + u'/').startsWith(site.GetFolder() + u'/') && folders.insert(folder).second)
        folder = folder.section(u'/', 0, -2);
}

// A server that runs as another user cannot read such a file, or files in such a folder.
void CheckPermissions(const CCatalog& catalog, CFindings& findings) {
    std::set<QString> folders;
    for (const auto& file : catalog.GetFiles()) {
        if (!catalog.PublishedAt(*file) && file->GetKind() < FileKind::SIGNATURE)
            continue;
        if (const auto& site = catalog.GetSite())
            AddFolders(*site, file->GetFolder(), folders);
        if (!QFile::permissions(file->GetPath()).testFlag(QFile::ReadOther))
            findings.Add(file->GetPath(), 0, Code::PRIVATE_FILE,
                         "not everybody may read this file, as a web server may have to");
    }
    for (const QString& folder : folders)
        if (!QFile::permissions(folder).testFlag(QFile::ExeOther))
            findings.Add(folder, 0, Code::PRIVATE_FILE,
                         "not everybody may enter this folder, as a web server may have to");
}

}  // namespace

void CheckReferences(const CCatalog& catalog, CFindings& findings) {
    for (const Reference& reference : catalog.GetReferences())
        CheckReference(catalog, reference, findings);
    if (CheckFollowed(catalog, findings))
        CheckElsewhere(catalog, findings);
    if (!catalog.GetSite())
        CheckOwnAddresses(catalog, findings);
    CheckPages(catalog, findings);
    CheckPermissions(catalog, findings);
}
