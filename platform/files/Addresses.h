// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Joins a folder's address and a file's name by two rules, takes a file's extension from its address, and
// prepares addresses for the browser and for print.
#pragma once

#include "platform/text/CAtlString.h"

#include <QString>

// The folder with a "/" appended, unless it is empty or ends in one.
CAtlString WithTrailingSlash(const CAtlString& folder);

// The folder without its last "/"s, then without its last "\"s, then "/" and the file name.
CAtlString JoinTrimmed(const CAtlString& folder, const CAtlString& fileName);

// The extension of the file at an address: from the last "." after the last "/" on, up to the query ("?") or
// fragment ("#"), with its dot. Only its first 32 characters, because a file's name has at most 255 bytes.
// Empty without a ".".
CAtlString AddressExtension(const CAtlString& address);

// The address with what no address may hold (RFC 3986, section 2) percent-encoded: blanks, control
// characters, quotes of all three kinds, "\", "<>^{|}" and, as UTF-8, everything beyond ASCII. What is
// encoded already stays as it is; so does a "%" that encodes nothing.
CAtlString PercentEncode(const CAtlString& address);

// The percent-encoded address of a page for a browser, when it begins with "http://", "https://" or "ftp://"
// in any case and goes on after that. A page without a scheme that begins with the name of a host gets
// "http://" in front of it; a name with a port must hold a dot or be "localhost", since "tel:5" has a scheme.
// Empty for everything else: other schemes, paths, options.
CAtlString WebAddress(const CAtlString& page);

// The address for print, without its password (RFC 3986, 3.2.1), even when it is no valid address.
QString WithoutPassword(const CAtlString& address);
