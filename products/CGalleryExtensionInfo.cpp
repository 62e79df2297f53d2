// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/CGalleryExtensionInfo.h"

#include "platform/settings/CSettingsIdentity.h"
#include "platform/settings/SettingsStore.h"

const CAtlString CGalleryExtensionInfo::PreferenceFile(L"Gallery");
const CAtlString CGalleryExtensionInfo::PreferencesPath(L"Software\\VARDO Technologies\\Gallery");
const CAtlString CGalleryExtensionInfo::TeamContentExtensionType(L"TeamContent");
const CAtlString CGalleryExtensionInfo::ImsManifestXmlPreference(L"ImsManifestXml");
const CAtlString CGalleryExtensionInfo::MetadataXmlPreference(L"MetadataXml");
const CAtlString CGalleryExtensionInfo::AppPathPreference(L"AppPath");
const CAtlString CGalleryExtensionInfo::ArgsPreference(L"Args");

bool CGalleryExtensionInfo::Load(const CAtlString& extensionType, const CAtlString& guid) {
    const CSettingsIdentity notebook("VARDO Technologies", "vardo-technologies.com", "VARDO Notebook");
    const CAtlString key = PreferencesPath + L"\\" + extensionType + L"\\" + guid;
    const auto read = [&key](const CAtlString& name) {
        return ReadRegistryString(HKEY_LOCAL_MACHINE, key, name, CAtlString(), PreferenceFile);
    };
    imsManifestXml_ = read(ImsManifestXmlPreference);
    metadataXml_ = read(MetadataXmlPreference);
    appPath_ = read(AppPathPreference);
    args_ = read(ArgsPreference);
    return !imsManifestXml_.IsEmpty() || (!metadataXml_.IsEmpty() && !appPath_.IsEmpty());
}
