// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// 8-bit text: the bytes of files and the few texts that go narrow to the operating system.
#pragma once

#include "platform/text/CSharedText.h"

#include <QString>

class CAtlString;

// The narrow twin of CAtlString, with the layout, the sharing and the operations of CSharedText. It may hold
// any bytes, 0 included.
//
// Mind that the conversions from wide text differ: from a CAtlString each character keeps its low 8 bits
// (nothing is encoded); from a const wchar_t* it is encoded as UTF-8. Null pointers count as empty text.
class CAtlStringA : public CSharedText<char> {
public:
    CAtlStringA() noexcept = default;
    CAtlStringA(const char* bytes);  // NOLINT(google-explicit-constructor): as a text, see CAtlString.
    CAtlStringA(const char* bytes, int length);
    explicit CAtlStringA(const wchar_t* encodedAsUtf8);
    explicit CAtlStringA(const CAtlString& narrowed);
    // It would go by way of a CAtlString, and be narrowed.
    explicit CAtlStringA(const QString&) = delete;

    // Each byte as one character (Latin-1).
    QString ToQString() const;
};
