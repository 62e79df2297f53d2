// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Checks of single values: versions, ranges, dates and addresses.
#pragma once

#include "catalog/CFindings.h"
#include "catalog/XmlRules.h"
#include "platform/text/CAtlString.h"

// The place of a value.
struct Place {
    QString file;
    int line = 0;
};

// Whether the program takes an address of its files: "http" and a host.
bool CanBeFetched(const QString& text);

// Checks a value that is there as what it is read as; an empty one is not looked at.
void CheckValue(const Place& place, const XmlAttributeRule& rule, const CAtlString& text,
                CFindings& findings);

// The ends of a range of versions, as they are written; either may be empty.
void CheckRange(const Place& place, const CAtlString& from, const CAtlString& to, CFindings& findings);

// A whole address that the program fetches: whether all of it is sent.
void CheckWholeAddress(const Place& place, const QString& address, CFindings& findings);
