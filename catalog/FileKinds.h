// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The kinds of files; a file's kind by its name alone, and by its elements alone. Any thread.
#pragma once

#include <QString>

class TiXmlElement;

// The kind as which the update program reads a file; from STRINGS on, it is not XML. The order counts.
enum class FileKind {
    UNKNOWN,
    PRODUCT_LIST,
    LOCAL_DESCRIPTION,
    REMOTE_DESCRIPTION,
    NOTIFICATION_DESCRIPTION,
    MESSAGE,
    INSTALLED_CATEGORIES,
    PUBLISHED_CATEGORIES,
    LANGUAGE_TABLE,
    STRINGS,
    PUBLIC_KEY,
    SIGNATURE,
    // What an address leads to and the program does not read: a page, an installer.
    PAGE,
    INSTALLER,
};

// Whether a file may be read as XML at all, where its name or an address does not say what it is.
bool IsXmlName(const QString& name);

// Whether the program reads files of that kind as XML.
bool IsXmlKind(FileKind kind);

// UNKNOWN for a name that does not say.
FileKind KindByName(const QString& name);

// Whether the program takes a file of that name for an installed description of the product with that base
// name, "BaseXml" in the list.
bool IsDescriptionOf(const QString& base, const QString& name);

// UNKNOWN for elements of no kind that the program reads. A best guess: a file with mistakes should still be
// recognised.
FileKind KindByContents(const TiXmlElement& root);
