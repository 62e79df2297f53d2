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

bool CKeyFile::HasMade(const CMinisignSignature& signature) const {
    return std::any_of(keys_.begin(), keys_.end(),
                       [&](const CMinisignKey& key) { return signature.IsBy(key); });
}

bool CKeyFile::HasSigned(std::string_view contents, const CMinisignSignature& signature) const {
    return std::any_of(keys_.begin(), keys_.end(),
                       [&](const CMinisignKey& key) { return signature.IsOf(contents, key); });
}

bool CKeyFile::HasSigned(const CFileDescriptor& file, const CMinisignSignature& signature) const {
    const auto key = std::find_if(keys_.begin(), keys_.end(),
                                  [&](const CMinisignKey& each) { return signature.IsBy(each); });
    // Once, because it reads the file to its end.
    return key != keys_.end() && signature.IsOf(file, *key);
}
