// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/files/PathText.h"

CAtlString NormalPath(const CAtlString& path) {
    CAtlString normal(path);
    normal.Replace(L'\\', L'/');
    const int last = normal.GetLength() - 1;
    if (last >= 0 && normal[last] == L'/')
        normal.Delete(last);
    return normal;
}
