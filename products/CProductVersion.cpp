// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/CProductVersion.h"

CAtlString CProductVersion::GetRemoteFile() {
    return downloader_ ? downloader_->Download(GetRemoteAddress()) : CAtlString();
}
