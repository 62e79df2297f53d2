// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/Addresses.h"

CAtlString WithTrailingSlash(const CAtlString& folder) {
    const int length = folder.GetLength();
    return length == 0 || folder[length - 1] == L'/' ? folder : folder + L"/";
}

CAtlString JoinTrimmed(const CAtlString& folder, const CAtlString& fileName) {
    CAtlString trimmed(folder);
    trimmed.TrimRight(L'/');
    trimmed.TrimRight(L'\\');
    return trimmed + L"/" + fileName;
}
