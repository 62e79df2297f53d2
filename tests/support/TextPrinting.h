// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Lets GoogleTest print the program's texts when an assertion fails.
#pragma once

#include "platform/text/CAtlString.h"
#include "platform/text/CAtlStringA.h"

#include <QString>
#include <ostream>

inline void PrintTo(const CAtlString& text, std::ostream* out) {
    *out << '"' << text.ToQString().toStdString() << '"';
}

inline void PrintTo(const CAtlStringA& text, std::ostream* out) {
    *out << '"' << text.GetString() << '"';
}

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
