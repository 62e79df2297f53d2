// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/text/CAtlStringA.h"

#include <algorithm>

#include "platform/text/CAtlString.h"
#include "platform/text/TextConversion.h"

CAtlStringA::CAtlStringA(const char* bytes) : CSharedText(bytes, LengthOf(bytes)) {}

CAtlStringA::CAtlStringA(const char* bytes, int length) : CSharedText(bytes, length) {}

CAtlStringA::CAtlStringA(const wchar_t* encodedAsUtf8)
    : CAtlStringA(EncodeUtf8(encodedAsUtf8 ? encodedAsUtf8 : L"").c_str()) {}

CAtlStringA::CAtlStringA(const CAtlString& narrowed) {
    if (narrowed.IsEmpty())
        return;
    std::transform(narrowed.begin(), narrowed.end(), GetBuffer(narrowed.GetLength()),
                   [](wchar_t ch) { return static_cast<char>(static_cast<unsigned>(ch) & 0xFFU); });
    ReleaseBuffer(narrowed.GetLength());
}

QString CAtlStringA::ToQString() const {
    return QString::fromLatin1(GetString(), GetLength());
}
