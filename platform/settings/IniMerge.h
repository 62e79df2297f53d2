// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Puts values into the text of an INI file, as QSettings::IniFormat has it, and keeps every other byte.
#pragma once

#include <QByteArray>

// The file's text with the lines of values, a text that QSettings has written: a line takes the place of the
// last line with its group and key, which is the one that QSettings reads, or goes to the end of its group.
// Groups that the file does not have follow at its end.
QByteArray MergeIni(const QByteArray& file, const QByteArray& values);
