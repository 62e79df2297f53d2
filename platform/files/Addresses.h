// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// How a folder's address and a file's name become one address (there are two rules, each for the files that
// say so), what a file that is fetched has of its address, and what of an address may be given to a browser.
#pragma once

#include "platform/text/CAtlString.h"

#include <QString>

// The folder as a folder: with a "/" appended unless it is empty or ends in one.
CAtlString WithTrailingSlash(const CAtlString& folder);

// The folder without its trailing run of "/", then without its trailing run of "\", then "/" and the file
// name.
CAtlString JoinTrimmed(const CAtlString& folder, const CAtlString& fileName);

// The extension of the file at an address: from the last "." after the last "/" on, up to the query ("?") or
// fragment ("#"), with its dot. Of a longer one, the first 32 characters: a name of 255 bytes is the longest
// that a file can have. Empty when there is none.
CAtlString AddressExtension(const CAtlString& address);

// The address with what no address may hold (RFC 3986, section 2) percent-encoded: blanks, control
// characters, quotes of all three kinds, "\", "<>^{|}" and, as UTF-8, everything beyond ASCII. What is
// encoded already stays as it is; so does a "%" that encodes nothing.
CAtlString PercentEncode(const CAtlString& address);

// What a browser may be given for a page: its address, percent-encoded, when that begins, in whatever case,
// with "http://", "https://" or "ftp://", and goes on after it. A page without a scheme that begins with the
// name of a host gets "http://" in front of it; a name with a port must hold a dot or be "localhost", since
// "tel:5" has a scheme. Empty for everything else: other schemes, paths, options.
CAtlString WebAddress(const CAtlString& page);

// The address as it may be printed: without the password that it may hold (RFC 3986, 3.2.1), also one that
// such an address may not hold.
QString WithoutPassword(const CAtlString& address);
