// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "signing/CKeyFile.h"

#include "platform/files/FileSystem.h"
#include "platform/xml/XmlFile.h"

#include <algorithm>

CKeyFile::CKeyFile(const CVardoFilePath& file) : isThere_(FileSystem::IsTaken(file.GetFilePathString())) {
    if (!isThere_)
        return;
    const CAtlStringA bytes = ReadFileBytes(file);
    keys_ = CMinisignKey::ParseAll({bytes.begin(), bytes.end()});
}

const CMinisignKey* CKeyFile::KeyOf(const CMinisignSignature& signature) const {
    const auto found = std::find_if(keys_.begin(), keys_.end(),
                                    [&](const CMinisignKey& key) { return signature.IsBy(key); });
    return found == keys_.end() ? nullptr : &*found;
}
