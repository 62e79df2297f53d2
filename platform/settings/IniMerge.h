// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Puts values into the text of an INI file, as QSettings::IniFormat has it, and keeps every other line.
#pragma once

#include <QByteArray>

// The file's text with the values of another, which QSettings has written: in every line with the value's
// whole key, in whatever group it stands, or else in a new line at the end of the value's group. A group that
// the file does not have follows at its end. Bytes of any encoding stay as they are. A pure function, which
// cannot fail; any thread. In a text that ends in the middle of a quotation, QSettings may not find the new
// lines.
QByteArray MergeIni(const QByteArray& file, const QByteArray& values);
