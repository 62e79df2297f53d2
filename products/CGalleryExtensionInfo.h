// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the notebook software has recorded about a content extension.
#pragma once

#include "platform/text/CAtlString.h"

// One record of the notebook software's machine-wide settings. Reading switches the settings identity to that
// of the notebook software and back. GUI thread only.
class CGalleryExtensionInfo {
public:
    // The domain identifier of the settings.
    static const CAtlString PreferenceFile;
    // The key that holds one sub-key per extension type, and below it one per extension.
    static const CAtlString PreferencesPath;
    // The type of gallery content.
    static const CAtlString TeamContentExtensionType;
    // The names of a record's values.
    static const CAtlString ImsManifestXmlPreference;
    static const CAtlString MetadataXmlPreference;
    static const CAtlString AppPathPreference;
    static const CAtlString ArgsPreference;

    // Reads the record of one extension in place of what is held. True when the record names a manifest, or
    // both a metadata file and a tool.
    bool Load(const CAtlString& extensionType, const CAtlString& guid);

    // Paths of the content's manifest file and of the tool that maintains the content, and the tool's
    // arguments; empty when the record lacks them.
    const CAtlString& GetImsManifestXml() const { return imsManifestXml_; }
    const CAtlString& GetAppPath() const { return appPath_; }
    const CAtlString& GetArgs() const { return args_; }

private:
    CAtlString imsManifestXml_;
    CAtlString metadataXml_;
    CAtlString appPath_;
    CAtlString args_;
};
