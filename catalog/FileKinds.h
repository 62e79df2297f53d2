// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The kind of a file, by its name alone and by its elements alone.
#pragma once

#include "catalog/CCatalogFile.h"

// Whether a file may be read as XML at all, where its name or an address does not say what it is.
bool IsXmlName(const QString& name);

// Whether the program reads files of that kind as XML.
bool IsXmlKind(FileKind kind);

// UNKNOWN for a name that does not say.
FileKind KindByName(const QString& name);

// UNKNOWN for elements of no kind that the program reads. A best guess: a file with mistakes should still be
// recognised.
FileKind KindByContents(const TiXmlElement& root);
