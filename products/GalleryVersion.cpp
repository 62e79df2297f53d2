// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/GalleryVersion.h"

#include "platform/files/Addresses.h"
#include "platform/files/CVardoDirectoryPath.h"
#include "platform/xml/XmlFile.h"
#include "products/CFetchedFile.h"
#include "products/CGalleryExtensionInfo.h"
#include "products/GalleryFormat.h"
#include "products/ListFormat.h"

#include <QLocale>
#include <algorithm>

namespace {

using namespace GalleryFormat;

CAtlString AsShown(const CAtlString& version) {
    const QDate date = GalleryVersion::ReadDate(version);
    return date.isValid() ? CAtlString(QLocale::system().toString(date, QLocale::ShortFormat)) : version;
}

}  // namespace

const CAtlString GalleryVersion::ELEMENT_NAME(ListFormat::GALLERY);

GalleryVersion::GalleryVersion(const boost::shared_ptr<IEnvironment>& environment)
    : environment_(environment) {}

bool GalleryVersion::Init(const TiXmlElement* element) {
    if (!element)
        return false;
    name_ = XmlAttribute(*element, ListFormat::NAME);
    guid_ = XmlAttribute(*element, ListFormat::GUID);
    defaultAddress_ = XmlAttribute(*element, ListFormat::GALLERY_FOLDER);
    return !name_.IsEmpty() && !guid_.IsEmpty() && !defaultAddress_.IsEmpty();
}

bool GalleryVersion::FindInstalled() {
    categories_.clear();
    CVardoFilePath file;
    const bool found = ReadInstalled(file);
    GetObserver().OnLocalFile(file, verdict_, CVersionString());
    return found;
}

bool GalleryVersion::ReadInstalled(CVardoFilePath& file) {
    CGalleryExtensionInfo record;
    if (guid_.IsEmpty() || !record.Load(CGalleryExtensionInfo::TeamContentExtensionType, guid_))
        return Reject(verdict_, Verdict::NO_RECORD);
    if (record.GetAppPath().IsEmpty())
        return Reject(verdict_, Verdict::NO_TOOL);
    if (record.GetImsManifestXml().IsEmpty())
        return Reject(verdict_, Verdict::NO_MANIFEST);
    toolPath_ = CVardoFilePath(record.GetAppPath());
    toolArguments_ = record.GetArgs();
    CVardoDirectoryPath folder{CVardoFilePath(record.GetImsManifestXml())};
    folder.Append(L"Uninstall");
    file = CVardoDirectoryPath::Combine(folder, GetDescriptionName() + L".xml");
    return ReadInstalledCategories(file);
}

QDate GalleryVersion::ReadDate(const CAtlString& version) {
    return QDate::fromString(version.ToQString(), "yyyy-MM-dd");
}

bool GalleryVersion::ReadInstalledCategories(const CVardoFilePath& file) {
    categories_.clear();
    TiXmlDocument document;
    if (!file.Exists())
        return Reject(verdict_, Verdict::MISSING);
    if (!LoadXml(file, document))
        return Reject(verdict_, Verdict::NO_XML);
    for (const TiXmlElement* category : Children(document.RootElement(), CATEGORY)) {
        const CAtlString id = XmlAttribute(*category, ID);
        if (!id.IsEmpty())
            categories_[id] = {XmlAttribute(*category, VERSION), CAtlString()};
    }
    return categories_.empty() ? Reject(verdict_, Verdict::NO_CATEGORY) : Accept(verdict_);
}

bool GalleryVersion::CheckForUpdates() {
    checked_ = false;
    const CAtlString address = GetCheckAddress();
    if (!GetDownloader() || address.IsEmpty())
        return false;
    const CFetchedFile fetched(GetDownloader().get(), address, environment_->SharedDataFolder());
    verdict_ = fetched.GetVerdict();
    checked_ = verdict_ == Verdict::COUNTS && ReadPublishedCategories(fetched.GetBytes());
    TellCheck();
    return checked_;
}

CAtlString GalleryVersion::GetCheckAddress() const {
    // Content that is not installed needs no published versions.
    return categories_.empty() ? CAtlString() : GetPublishedAddress();
}

CAtlString GalleryVersion::GetPublishedAddress() const {
    return JoinTrimmed(defaultAddress_, PUBLISHED_FILE);
}

bool GalleryVersion::ReadPublishedCategories(const CAtlStringA& bytes) {
    TiXmlDocument document;
    if (!LoadXml(bytes, document))
        return Reject(verdict_, Verdict::NO_XML);
    const TiXmlElement* parent = document.RootElement()->FirstChildElement(CATEGORIES);
    if (!parent)
        return Reject(verdict_, Verdict::NO_CATEGORY);
    bool updated = false;
    for (const TiXmlElement* category : Children(parent, CATEGORY)) {
        const auto known = categories_.find(XmlAttribute(*category, ID));
        if (known == categories_.end())
            continue;
        known->second.latest = XmlAttribute(*category, VERSION);
        updated = true;
    }
    return updated ? Accept(verdict_) : Reject(verdict_, Verdict::UNKNOWN_CATEGORIES);
}

void GalleryVersion::TellCheck() const {
    GetObserver().OnRemoteFile(verdict_);
    for (const auto& [id, versions] : categories_)
        GetObserver().OnCategory(id, versions.installed, versions.latest);
}

bool GalleryVersion::IsUpdateAvailable(unsigned /*item*/) const {
    return std::any_of(categories_.begin(), categories_.end(), [](const auto& category) {
        return category.second.installed.Compare(category.second.latest) < 0;
    });
}

bool GalleryVersion::HasAction(unsigned /*item*/) const {
    return checked_ && toolPath_.Exists();
}

bool GalleryVersion::RunAction(unsigned /*item*/) {
    return environment_->StartDetached(toolPath_.GetFilePathString().ToQString(),
                                       {"-guid", guid_.ToQString()});
}

CAtlString GalleryVersion::GetInstalledVersion(unsigned /*item*/) const {
    return AsShown(Newest(&Versions::installed));
}

CAtlString GalleryVersion::GetLatestVersion(unsigned /*item*/) const {
    return AsShown(Newest(&Versions::latest));
}

CAtlString GalleryVersion::GetOffer(unsigned /*item*/) const {
    QStringList versions;
    for (const auto& [id, version] : categories_)
        versions << version.latest.ToQString();
    return CAtlString(versions.join(' ').trimmed());
}

CAtlString GalleryVersion::Newest(CAtlString Versions::*which) const {
    const auto newest = std::max_element(
        categories_.begin(), categories_.end(),
        [which](const auto& a, const auto& b) { return (a.second.*which).Compare(b.second.*which) < 0; });
    return newest == categories_.end() ? CAtlString() : newest->second.*which;
}

CAtlString GalleryVersion::GetDescriptionName() const {
    return INSTALLED_FILE;
}
