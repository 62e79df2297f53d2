// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/CProductVersions.h"

#include "platform/xml/XmlFile.h"
#include "products/CProductsByKey.h"
#include "products/CVersionStringRange.h"
#include "products/ListFormat.h"

#include <algorithm>
#include <boost/make_shared.hpp>
#include <cwctype>

const CAtlString CProductVersions::ELEMENT_NAME(ListFormat::PRODUCT);

CProductVersions::CProductVersions(const boost::shared_ptr<IEnvironment>& environment)
    : environment_(environment) {}

bool CProductVersions::Init(const TiXmlElement* element) {
    if (!element)
        return false;
    name_ = XmlAttribute(*element, ListFormat::NAME).ToQString();
    baseName_ = XmlAttribute(*element, ListFormat::BASE_XML);
    defaultAddress_ = XmlAttribute(*element, ListFormat::DEFAULT_PAGE);
    ReadDisablers(*element);
    return !name_.isEmpty() && !baseName_.IsEmpty();
}

void CProductVersions::ReadDisablers(const TiXmlElement& element) {
    disablers_.clear();
    for (const TiXmlElement* disabler :
         Children(element.FirstChildElement(ListFormat::DISABLERS), ListFormat::DISABLER))
        disablers_.push_back({XmlAttribute(*disabler, ListFormat::DISABLER_UID),
                              CVersionString(XmlAttribute(*disabler, ListFormat::DISABLER_FROM)),
                              CVersionString(XmlAttribute(*disabler, ListFormat::DISABLER_TO))});
}

bool CProductVersions::FindInstalled() {
    items_.clear();
    current_ = nullptr;
    std::vector<CVardoFilePath> files;
    environment_->SharedFiles()->ListFiles(baseName_, L".xml", files);
    for (const CVardoFilePath& file : files) {
        const auto item = boost::make_shared<CProductVersion>(file);
        const Verdict verdict = Read(file, *item);
        GetObserver().OnLocalFile(file, verdict, item->GetCurrentVersion());
        if (verdict != Verdict::COUNTS)
            continue;
        items_.push_back(item);
        if (!current_ || current_->GetCurrentVersion().IsLess(item->GetCurrentVersion()))
            current_ = item.get();
    }
    return !items_.empty();
}

Verdict CProductVersions::Read(const CVardoFilePath& file, CProductVersion& item) const {
    if (!IsDescriptionFile(baseName_, file))
        return Verdict::OTHER_NAME;
    if (!item.LoadLocal())
        return item.GetVerdict();
    return IsKnown(item.GetCurrentVersion()) ? Verdict::KNOWN_VERSION : Verdict::COUNTS;
}

bool CProductVersions::IsDescriptionFile(const CAtlString& baseName, const CVardoFilePath& file) {
    const CAtlString title = file.GetFileTitle();
    const int length = baseName.GetLength();
    if (title.GetLength() <= length)
        return title.GetLength() == length;
    return std::iswdigit(static_cast<wint_t>(title[length])) != 0;
}

bool CProductVersions::IsKnown(const CVersionString& version) const {
    return std::any_of(items_.begin(), items_.end(),
                       [&](const auto& item) { return version.IsEqual(item->GetCurrentVersion()); });
}

bool CProductVersions::CheckForUpdates() {
    if (!current_)
        return false;
    current_->SetDownloader(GetDownloader().get());
    const bool loaded = current_->LoadRemote();
    GetObserver().OnRemoteFile(current_->GetVerdict());
    if (loaded)
        GetObserver().OnOffer(current_->GetTable().ChooseRange(), current_->GetTable().ChooseOffer());
    return loaded;
}

CAtlString CProductVersions::GetCheckAddress() const {
    return current_ ? current_->GetRemoteAddress() : CAtlString();
}

bool CProductVersions::HasAction(unsigned item) const {
    return current_ && !disabled_ && IsCurrent(item);
}

bool CProductVersions::RunAction(unsigned item) {
    return environment_->OpenWebPage(GetPage(item), name_);
}

CAtlString CProductVersions::GetInstalledVersion(unsigned item) const {
    return items_[item]->GetCurrentVersion().GetString();
}

CAtlString CProductVersions::GetLatestVersion(unsigned item) const {
    if (disabled_)
        return current_->GetCurrentVersion().GetString();
    return items_[item]->GetUpdateVersion().GetString();
}

CAtlString CProductVersions::GetWebPage() const {
    return current_ ? PageOf(current_->GetTable().ChooseOffer()) : defaultAddress_;
}

CAtlString CProductVersions::PageOf(const CUpdateEntry& offer) const {
    return offer.webPage.IsEmpty() ? defaultAddress_ : offer.webPage;
}

void CProductVersions::ApplyDisablers(const CProductsByKey& all) {
    if (!current_ || disabled_ || disablers_.empty())
        return;
    std::vector<CAtlString> keys;
    keys.reserve(disablers_.size());
    for (const Disabler& disabler : disablers_)
        keys.push_back(disabler.uid);
    const List others = GetObserver().WantsComparisons() ? all.GetAll() : all.WithKeys(keys);
    const auto disabler = std::find_if(others.begin(), others.end(), [this](const auto& other) {
        return other.get() != this && other->GetKey().Compare(baseName_) != 0 && IsDisabledBy(*other);
    });
    if (disabler == others.end())
        return;
    disabled_ = true;
    disablerName_ = (*disabler)->GetName();
}

bool CProductVersions::IsDisabledBy(const IProduct& other) const {
    const CAtlString key = other.GetKey();
    for (unsigned item = 0; item < other.GetItemCount(); ++item) {
        for (const Disabler& disabler : disablers_) {
            GetObserver().OnComparison(key, disabler.uid);
            if (key.Compare(disabler.uid) == 0 && IsInRange(other.GetInstalledVersion(item), disabler))
                return true;
        }
    }
    return false;
}

bool CProductVersions::IsInRange(const CAtlString& version, const Disabler& disabler) const {
    const CVersionString installed(version);
    const CVersionStringRange range(disabler.from, disabler.to);
    const bool isInRange = range.Contains(installed);
    GetObserver().OnDisabler(disabler.uid, installed, range, isInRange);
    return isInRange;
}
