// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The checks of each kind of file; every one of them goes through all files of its kinds.
#pragma once

#include "catalog/CCatalog.h"
#include "catalog/CFindings.h"
#include "products/CUpdateXmlReader.h"

// Product lists: left out elements, disablers without effect, keys that come twice.
void CheckProductLists(const CCatalog& catalog, CFindings& findings);

// Local and remote descriptions: what is rejected, ranges and their offers.
void CheckLocalDescriptions(const CCatalog& catalog, CFindings& findings);
void CheckRemoteDescriptions(const CCatalog& catalog, CFindings& findings);

// Descriptions and messages of notifications: what is never shown, and in which languages.
void CheckNotifications(const CCatalog& catalog, CFindings& findings);

// Installed and published gallery categories.
void CheckGalleries(const CCatalog& catalog, CFindings& findings);

// Language tables, and the strings files in the folders that they name.
void CheckLanguageTables(const CCatalog& catalog, CFindings& findings);
void CheckStringsFiles(const CCatalog& catalog, CFindings& findings);

// The files and pages that other files name by their addresses, and whether a web server may read them.
void CheckReferences(const CCatalog& catalog, CFindings& findings);

// The installers of the program's own updates, but for a version that is no news here: whether each can be
// fetched, is accepted and can be started.
void CheckInstallers(const CCatalog& catalog, CFindings& findings);
// The same for the offer of a reader that has read both files. That the offer of a range is signed with
// another key than those beside the local description is a note, when all of the range is below that: older
// installations may have that key.
void CheckInstaller(const CCatalog& catalog, const CUpdateXmlReader& reader, const CCatalogFile& local,
                    const CCatalogFile& remote, CFindings& findings);

// With the maker's key for XML files in the folder: the signatures of all that is published. Also checks that
// key files are valid.
void CheckSignatures(const CCatalog& catalog, CFindings& findings);

// All of these, and what concerns every file: XML that is malformed, files of no known kind.
CFindings CheckCatalog(const CCatalog& catalog);
