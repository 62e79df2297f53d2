// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Checks an element by its rules.
#pragma once

#include "catalog/CCatalogFile.h"
#include "catalog/CFindings.h"
#include "catalog/XmlRules.h"

// The line of an attribute; that of the element when it lacks the attribute.
int AttributeLine(const TiXmlElement& element, const char* name);

// The attribute as the program reads it.
QString AttributeText(const TiXmlElement& element, const char* name);

// The rule for the children of that name; null when they are not read.
const XmlElementRule* FindRule(std::span<const XmlElementRule> rules, const std::string& name);

// Names that are not read, values that are missing or not what they are read as: of one element, and of all
// below it.
void CheckAttributes(const CCatalogFile& file, const TiXmlElement& element, const XmlElementRule& rule,
                     CFindings& findings);
void CheckElement(const CCatalogFile& file, const TiXmlElement& element, const XmlElementRule& rule,
                  CFindings& findings);

// An element of a name that is not read, with the name that may be meant.
void AddUnknownElement(const CCatalogFile& file, const TiXmlElement& element,
                       std::span<const XmlElementRule> rules, const FindingCode& code,
                       const char* consequence, CFindings& findings);
