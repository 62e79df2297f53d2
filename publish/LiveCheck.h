// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Whether a server gives installed programs what lies in a folder.
#pragma once

#include "catalog/CCatalog.h"
#include "catalog/CFindings.h"
#include "net/Downloader.h"

// Fetches all that installed programs fetch of the catalog's site, with the program's own installer and its
// signature, as they do, from the address at which that site is published now. Returns the files that are
// missing there or differ from the folder, by their paths. Empty without a site. GUI thread; serves events
// while it waits.
CFindings CheckLive(const CCatalog& catalog, const QString& address, Downloader& downloader);
