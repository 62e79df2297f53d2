// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/Checks.h"
#include "catalog/ElementChecks.h"
#include "platform/files/CVardoDirectoryPath.h"
#include "products/ListFormat.h"
#include "products/Products.h"
#include "signing/CCatalogueSeal.h"
#include "signing/CMinisignSignature.h"

namespace {

// Enough notice for a maker that signs by hand once a month.
constexpr int WARNING_DAYS = 14;

QString Text(const std::string& path) {
    return QString::fromStdString(path);
}

void CheckLastDay(const CCatalogFile& file, const QDate& lastDay, CFindings& findings) {
    const QDate today = TodayInUtc();
    const QString day = lastDay.toString(Qt::ISODate);
    if (today > lastDay)
        findings.Add(
            file.GetPath(), 0, Code::SIGNATURE_OVER,
            QString(
                "the signature was good until %1: the program refuses the file from the second day after it")
                .arg(day));
    else if (today.daysTo(lastDay) < WARNING_DAYS)
        findings.Add(file.GetPath(), 0, Code::SIGNATURE_ENDS,
                     QString("the signature is good until %1: sign the file again").arg(day));
}

// A signature names one path, by which all addresses must ask for the file.
void CheckReferences(const CCatalog& catalog, const CCatalogFile& file, const QString& address,
                     CFindings& findings) {
    const std::string path = CCatalogueSeal::PathOf(CAtlString(address));
    for (const Reference& reference : catalog.GetReferences()) {
        const std::string asked = CCatalogueSeal::PathOf(CAtlString(reference.address));
        if (catalog.FileOf(reference.address) == file.GetPath() && asked != path)
            findings.Add(reference.from->GetPath(), reference.line, Code::OTHER_PATH,
                         QString("the program asks for the path \"%1\", but \"%2\" is published, and to be "
                                 "signed, for \"%3\"")
                             .arg(Text(asked), file.GetPath(), Text(path)));
    }
}

// An installation stores a list only for the path that its own list names.
void CheckListAddresses(const CCatalog& catalog, const CCatalogFile& key, CFindings& findings) {
    const auto pathOf = [](const CCatalogFile& list) {
        return CCatalogueSeal::PathOf(CAtlString(AttributeText(*list.GetRoot(), ListFormat::URL)));
    };
    const CCatalogFile* installed = catalog.Find(key.GetFolder() + '/' + Products::FILE_NAME.ToQString());
    if (!installed || !installed->GetRoot() || pathOf(*installed).empty())
        return;
    const auto path = catalog.FileOf(AttributeText(*installed->GetRoot(), ListFormat::URL));
    const CCatalogFile* list = path ? catalog.Find(*path) : catalog.PublishedList();
    if (list && list->GetRoot() && pathOf(*list) != pathOf(*installed))
        findings.Add(list->GetPath(), AttributeLine(*list->GetRoot(), ListFormat::URL), Code::OTHER_PATH,
                     QString("installations go on to \"%1\", but believe no stored list of another "
                             "path than \"%2\"")
                         .arg(Text(pathOf(*list)), Text(pathOf(*installed))));
}

void CheckPublished(const CCatalog& catalog, const CCatalogFile& key, CFindings& findings) {
    const CCatalogueSeal seal(CVardoDirectoryPath(CAtlString(key.GetFolder())));
    for (const auto& file : catalog.GetFiles()) {
        const auto address = catalog.PublishedAt(*file);
        if (!address)
            continue;
        CheckReferences(catalog, *file, *address, findings);
        const CAtlStringA bytes = ReadFileBytes(file->GetFilePath());
        const auto statement = seal.Read({bytes.begin(), bytes.end()});
        if (!statement) {
            findings.Add(file->GetPath(), 0, Code::UNSIGNED_FILE,
                         QString("installations with the key \"%1\" refuse this file: it ends with no "
                                 "good signature")
                             .arg(key.GetPath()));
            continue;
        }
        if (CCatalogueSeal::PathOf(CAtlString(*address)) != statement->path)
            findings.Add(file->GetPath(), 0, Code::SIGNED_ELSEWHERE,
                         QString("the file is signed for the path \"%1\", but is published at \"%2\"")
                             .arg(Text(statement->path), *address));
        CheckLastDay(*file, statement->until, findings);
    }
}

}  // namespace

void CheckSignatures(const CCatalog& catalog, CFindings& findings) {
    for (const CCatalogFile* key : catalog.FilesOf(FileKind::PUBLIC_KEY)) {
        if (!CKeyFile(key->GetFilePath()).HasKeys())
            findings.Add(key->GetPath(), 0, Code::BAD_KEY,
                         "this is no file of public keys, or holds something else as well: "
                         "installations with it refuse everything that must be signed");
        else if (key->GetName() == QString::fromWCharArray(CCatalogueSeal::KEY_FILE)) {
            CheckPublished(catalog, *key, findings);
            CheckListAddresses(catalog, *key, findings);
        }
    }
}
