// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/CCatalog.h"

#include "catalog/ElementChecks.h"
#include "catalog/FileKinds.h"
#include "catalog/FormatRules.h"
#include "platform/desktop/CUnattendedEnvironment.h"
#include "platform/files/Addresses.h"
#include "products/CProductVersion.h"
#include "products/CProductVersions.h"
#include "products/GalleryVersion.h"
#include "products/Notification.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <boost/make_shared.hpp>
#include <filesystem>

namespace {

// The kind by the contents. A file that no other reader could read may still be a description.
FileKind KindOf(CCatalogFile& file) {
    for (const FileKind assumed : {FileKind::UNKNOWN, FileKind::REMOTE_DESCRIPTION}) {
        file.SetKind(assumed);
        if (file.GetRoot())
            return KindByContents(*file.GetRoot());
    }
    return FileKind::UNKNOWN;
}

void AddListReferences(const CCatalogFile& file, const boost::shared_ptr<IEnvironment>& environment,
                       std::vector<Reference>& references) {
    const TiXmlElement& root = *file.GetRoot();
    const QString newest = AttributeText(root, ListFormat::URL);
    if (!newest.isEmpty())
        references.push_back({&file, AttributeLine(root, ListFormat::URL), newest, FileKind::PRODUCT_LIST});
    for (const TiXmlElement* child : Children(&root, ListFormat::GALLERY))
        if (GalleryVersion gallery(environment); gallery.Init(child))
            references.push_back({&file, AttributeLine(*child, ListFormat::GALLERY_FOLDER),
                                  gallery.GetPublishedAddress().ToQString(), FileKind::PUBLISHED_CATEGORIES});
}

void AddDescriptionReference(const CCatalogFile& file, std::vector<Reference>& references) {
    CProductVersion description(file.GetFilePath());
    const bool isOwn = file.GetName() == QString::fromWCharArray(DescriptionFormat::OWN_FILE);
    if (!description.LoadLocal() || (isOwn && description.IsNoUpdates()))
        return;
    const TiXmlElement* product = file.GetRoot()->FirstChildElement(DescriptionFormat::PRODUCT);
    references.push_back({&file, product ? AttributeLine(*product, DescriptionFormat::REMOTE_FILE) : 0,
                          description.GetRemoteAddress().ToQString(), FileKind::REMOTE_DESCRIPTION});
}

void AddMessageReference(const CCatalogFile& file, const boost::shared_ptr<IEnvironment>& environment,
                         std::vector<Reference>& references) {
    Notification notification(environment);
    if (notification.ReadDescription(file.GetFilePath()))
        references.push_back({&file, AttributeLine(*file.GetRoot(), NotificationFormat::MESSAGE_FILE),
                              notification.GetCheckAddress().ToQString(), FileKind::MESSAGE});
}

// Adds the links of an element and of those below it that the rules know.
void AddLinks(const CCatalogFile& file, const TiXmlElement& element, const XmlElementRule& rule,
              std::vector<Reference>& links) {
    using namespace DescriptionFormat;
    for (const auto& [name, value, isNeeded] : rule.attributes) {
        const CAtlString text = XmlAttribute(element, name);
        if (text.IsEmpty())
            continue;
        const int line = AttributeLine(element, name);
        if (value == XmlValue::PAGE)
            links.push_back({&file, line, WebAddress(text).ToQString(), FileKind::PAGE});
        else if (std::string_view(name) == INSTALL_FILE)
            links.push_back({&file, line,
                             JoinTrimmed(XmlAttribute(element, INSTALL_FOLDER), text).ToQString(),
                             FileKind::INSTALLER});
    }
    for (const TiXmlElement* child : Children(&element))
        if (const XmlElementRule* childRule = FindRule(rule.children, child->ValueStr()))
            AddLinks(file, *child, *childRule, links);
}

// Links are not followed: what they lead to must lie in the whole folder by another path.
bool IsWithin(const QFileInfo& link, const QString& whole) {
    return link.canonicalFilePath().startsWith(QFileInfo(whole).canonicalFilePath() + u'/');
}

}  // namespace

CCatalog::CCatalog(const QString& folder, const QString& siteAddress, const QString& siteFolder)
    : folder_(QDir::cleanPath(folder)),
      environment_(boost::make_shared<CUnattendedEnvironment>(CVardoDirectoryPath())) {
    ListEntries(folder_);
    unreadFolders_.sort();
    std::sort(files_.begin(), files_.end(),
              [](const auto& a, const auto& b) { return a->GetPath() < b->GetPath(); });
    if (!siteAddress.isEmpty())
        site_.emplace(siteAddress, QDir::cleanPath(siteFolder));
    RecogniseByName();
    RecogniseByContents();
    CollectReferences();
    if (!site_)
        FindSite();
    RecogniseReferenced();
    CollectLinks();
}

// QDirIterator would take a folder that the disk fails to read for one that has no more files.
void CCatalog::ListEntries(const QString& folder) {
    std::error_code failure;
    bool isWhole = QFileInfo(folder).isExecutable();
    std::filesystem::directory_iterator entries(QFile::encodeName(folder).toStdString(), failure);
    for (; entries != std::filesystem::directory_iterator(); entries.increment(failure)) {
        const QFileInfo entry(folder + u'/' + QFile::decodeName(entries->path().filename().c_str()));
        if (entry.isHidden())
            continue;
        if (entry.isFile())
            files_.push_back(std::make_unique<CCatalogFile>(entry.filePath()));
        else if (entry.isDir() && !entry.isSymLink())
            ListEntries(entry.filePath());
        else if (entry.isDir() && !IsWithin(entry, folder_))
            unreadFolders_ << entry.filePath();
        std::error_code unknown;
        entries->symlink_status(unknown);
        isWhole = isWhole && (!unknown || unknown == std::errc::no_such_file_or_directory);
    }
    if (failure || !isWhole)
        unreadFolders_ << folder;
}

std::vector<const CCatalogFile*> CCatalog::FilesOf(FileKind kind) const {
    std::vector<const CCatalogFile*> found;
    for (const auto& file : files_)
        if (file->GetKind() == kind)
            found.push_back(file.get());
    return found;
}

std::vector<const CCatalogFile*> CCatalog::ReadableFilesOf(FileKind kind) const {
    std::vector<const CCatalogFile*> found = FilesOf(kind);
    std::erase_if(found, [](const CCatalogFile* file) { return !file->GetRoot(); });
    return found;
}

std::optional<QString> CCatalog::FileOf(const QString& address) const {
    return site_ ? site_->FileOf(address) : std::nullopt;
}

CCatalogFile* CCatalog::FileAt(const QString& address) const {
    const auto path = FileOf(address);
    return path ? Find(*path) : nullptr;
}

std::optional<QString> CCatalog::PublishedAt(const CCatalogFile& file) const {
    const FileKind kind = file.GetKind();
    const bool isFetched = kind == FileKind::REMOTE_DESCRIPTION || kind == FileKind::MESSAGE ||
                           kind == FileKind::PUBLISHED_CATEGORIES ||
                           (kind == FileKind::PRODUCT_LIST && !IsInstalledCopy(file));
    return isFetched && site_ ? site_->AddressOf(file.GetPath()) : std::nullopt;
}

const CCatalogFile* CCatalog::PublishedList() const {
    const CCatalogFile* first = nullptr;
    for (const CCatalogFile* list : FilesOf(FileKind::PRODUCT_LIST)) {
        if (PublishedAt(*list)) {
            first = first ? first : list;
            continue;
        }
        const CCatalogFile* newest =
            list->GetRoot() ? FileAt(AttributeText(*list->GetRoot(), ListFormat::URL)) : nullptr;
        if (newest && newest->GetKind() == FileKind::PRODUCT_LIST)
            return newest;
    }
    return first;
}

bool CCatalog::IsInstalledCopy(const CCatalogFile& list) const {
    const auto installed = FilesOf(FileKind::LOCAL_DESCRIPTION);
    const bool isAmongThem = std::any_of(installed.begin(), installed.end(), [&](const CCatalogFile* file) {
        return file->GetFolder() == list.GetFolder();
    });
    return isAmongThem &&
           std::none_of(references_.begin(), references_.end(), [&](const Reference& reference) {
               return FileOf(reference.address) == list.GetPath();
           });
}

CCatalogFile* CCatalog::Find(const QString& path) const {
    const auto found =
        std::lower_bound(files_.begin(), files_.end(), path,
                         [](const auto& file, const QString& text) { return file->GetPath() < text; });
    return found != files_.end() && (*found)->GetPath() == path ? found->get() : nullptr;
}

const CCatalogFile* CCatalog::FindInOtherCase(const QString& path) const {
    const auto found = std::find_if(files_.begin(), files_.end(), [&](const auto& file) {
        return file->GetPath().compare(path, Qt::CaseInsensitive) == 0 && file->GetPath() != path;
    });
    return found == files_.end() ? nullptr : found->get();
}

bool CCatalog::HasFolder(const QString& path) const {
    const QString beginning = path.endsWith(u'/') ? path : path + u'/';
    return std::any_of(files_.begin(), files_.end(),
                       [&](const auto& file) { return file->GetPath().startsWith(beginning); });
}

void CCatalog::RecogniseByName() {
    for (const auto& file : files_)
        file->SetKind(KindByName(file->GetName()));
    for (const CCatalogFile* list : FilesOf(FileKind::PRODUCT_LIST))
        RecogniseListed(*list);
}

// A file that looks like a remote description or a message is not an installed one, whatever its name.
void CCatalog::RecogniseListed(const CCatalogFile& list) {
    for (const TiXmlElement* child : Children(list.GetRoot())) {
        const QString base = AttributeText(*child, ListFormat::BASE_XML);
        const QString notice = AttributeText(*child, ListFormat::NOTIFICATION_BASE) + QLatin1String(".xml");
        for (const auto& file : files_) {
            const QString& name = file->GetName();
            const bool isProducts = IsDescriptionOf(base, name);
            if ((!isProducts && name != notice) || file->GetKind() != FileKind::UNKNOWN)
                continue;
            const FileKind looks = file->GetRoot() ? KindByContents(*file->GetRoot()) : FileKind::UNKNOWN;
            if (looks != FileKind::REMOTE_DESCRIPTION && looks != FileKind::MESSAGE)
                file->SetKind(isProducts ? FileKind::LOCAL_DESCRIPTION : FileKind::NOTIFICATION_DESCRIPTION);
        }
    }
}

void CCatalog::RecogniseByContents() {
    for (const auto& file : files_)
        if (file->GetKind() == FileKind::UNKNOWN && IsXmlName(file->GetName()))
            file->SetKind(KindOf(*file));
}

void CCatalog::CollectReferences() {
    for (const auto& file : files_) {
        if (!IsXmlKind(file->GetKind()) || !file->GetRoot())
            continue;
        if (file->GetKind() == FileKind::PRODUCT_LIST)
            AddListReferences(*file, environment_, references_);
        else if (file->GetKind() == FileKind::LOCAL_DESCRIPTION)
            AddDescriptionReference(*file, references_);
        else if (file->GetKind() == FileKind::NOTIFICATION_DESCRIPTION)
            AddMessageReference(*file, environment_, references_);
    }
}

// A list that names its own address tells where its folder is published. The installed copy names it, too,
// but lies among local descriptions, and its addresses lead to no other file there but to those. Of several
// lists, the one counts whose folder has most of the files that others name.
void CCatalog::FindSite() {
    std::ptrdiff_t most = -1;
    for (const CCatalogFile* list : FilesOf(FileKind::PRODUCT_LIST)) {
        const QString address =
            list->GetRoot() ? AttributeText(*list->GetRoot(), ListFormat::URL) : QString();
        if (address.section(u'/', -1) != list->GetName())
            continue;
        const CSite site(address.section(u'/', 0, -2), list->GetFolder());
        const auto leadsToFile = [&](const Reference& reference) {
            const auto path = site.FileOf(reference.address);
            const CCatalogFile* file = path ? Find(*path) : nullptr;
            return file && file != list && file->GetKind() != FileKind::LOCAL_DESCRIPTION &&
                   file->GetKind() != FileKind::NOTIFICATION_DESCRIPTION;
        };
        const auto lieBeside = [&](const CCatalogFile* file) {
            return file->GetFolder() == list->GetFolder();
        };
        const auto installed = FilesOf(FileKind::LOCAL_DESCRIPTION);
        const auto named = std::count_if(references_.begin(), references_.end(), leadsToFile);
        // A copy of the site that lies beside it has the same address: the first one counts.
        const bool isCopy = site_ && site_->GetAddress() == site.GetAddress();
        if (!isCopy && named > most &&
            (named > 0 || std::none_of(installed.begin(), installed.end(), lieBeside))) {
            most = named;
            site_ = site;
        }
    }
}

void CCatalog::RecogniseReferenced() {
    for (const Reference& reference : references_) {
        CCatalogFile* file = FileAt(reference.address);
        if (file && file != reference.from)
            file->SetKind(reference.kind);
    }
}

void CCatalog::CollectLinks() {
    const std::pair<FileKind, const XmlElementRule&> linking[] = {
        {FileKind::PRODUCT_LIST, ListRules::LIST},
        {FileKind::REMOTE_DESCRIPTION, DescriptionRules::REMOTE},
        {FileKind::MESSAGE, NotificationRules::MESSAGE}};
    for (const auto& [kind, rule] : linking)
        for (const CCatalogFile* file : ReadableFilesOf(kind))
            AddLinks(*file, *file->GetRoot(), rule, links_);
    for (const Reference& link : links_) {
        CCatalogFile* file = FileAt(link.address);
        if (file && file->GetKind() == FileKind::UNKNOWN)
            file->SetKind(link.kind);
    }
}

std::vector<QString> LanguageCodes(const CCatalog& catalog) {
    std::vector<QString> codes;
    for (const CCatalogFile* table : catalog.FilesOf(FileKind::LANGUAGE_TABLE))
        for (const TiXmlElement* language : Children(table->GetRoot()))
            if (const CAtlString code = XmlAttribute(*language, LanguageFormat::CODE); !code.IsEmpty())
                codes.push_back(code.ToQString());
    return codes;
}
