// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/CAtlStringA.h"

#include <cwchar>

#include "platform/CAtlString.h"
#include "platform/TextConversion.h"

namespace {

// In characters. Most texts are shorter; one of them takes at most a kilobyte of the stack.
constexpr int SHORT_LENGTH = 256;
constexpr int MOST_BYTES_PER_CHARACTER = 4;

CAtlStringA Narrowed(const wchar_t* text, int length) {
    CAtlStringA result;
    if (length <= 0)
        return result;
    std::transform(text, text + length, result.GetBuffer(length),
                   [](wchar_t ch) { return static_cast<char>(static_cast<unsigned>(ch) & 0xFFU); });
    result.ReleaseBuffer(length);
    return result;
}

// Most texts are ASCII: one pass that narrows many characters at once, before anything is encoded.
CAtlStringA EncodedShort(const wchar_t* text, int length) {
    // Written here first, because a text has exactly the room that it needs: counting that takes longer.
    char bytes[MOST_BYTES_PER_CHARACTER * SHORT_LENGTH];
    if (NarrowAscii(text, length, bytes))
        return CAtlStringA(bytes, length);
    return CAtlStringA(bytes, EncodeUtf8(text, length, bytes));
}

CAtlStringA EncodedLong(const wchar_t* text, int length) {
    CAtlStringA result;
    if (NarrowAscii(text, length, result.GetBuffer(length))) {
        result.ReleaseBuffer(length);
        return result;
    }
    result.Empty();
    char* out = result.GetBuffer(Utf8Size(text, length));
    const int written = EncodeUtf8(text, length, out);
    result.ReleaseBuffer(written);
    return result;
}

CAtlStringA Encoded(const wchar_t* text) {
    const int length = text ? static_cast<int>(std::wcslen(text)) : 0;
    return length <= SHORT_LENGTH ? EncodedShort(text, length) : EncodedLong(text, length);
}

CAtlStringA FromQByteArray(const QByteArray& bytes) {
    return CAtlStringA(bytes.constData(), static_cast<int>(bytes.size()));
}

}  // namespace

CAtlStringA::CAtlStringA(const char* bytes) {
    Assign(bytes, LengthOf(bytes));
}

CAtlStringA::CAtlStringA(const char* bytes, int length) {
    Assign(bytes, bytes ? length : 0);
}

CAtlStringA::CAtlStringA(const wchar_t* encodedAsUtf8) : CAtlStringA(Encoded(encodedAsUtf8)) {}

CAtlStringA::CAtlStringA(const CAtlString& narrowed)
    : CAtlStringA(Narrowed(narrowed.GetString(), narrowed.GetLength())) {}

CAtlStringA::CAtlStringA(const QString& encodedAsUtf8)
    : CAtlStringA(FromQByteArray(encodedAsUtf8.toUtf8())) {}

CAtlStringA& CAtlStringA::operator=(const char* bytes) {
    Assign(bytes, LengthOf(bytes));
    return *this;
}

CAtlStringA& CAtlStringA::operator=(const wchar_t* narrowed) {
    return *this = Narrowed(narrowed, narrowed ? static_cast<int>(std::wcslen(narrowed)) : 0);
}

CAtlStringA& CAtlStringA::operator=(const CAtlString& narrowed) {
    return *this = CAtlStringA(narrowed);
}

QString CAtlStringA::ToQString() const {
    return QString::fromLatin1(GetString(), GetLength());
}

CAtlStringA& CAtlStringA::operator+=(const CAtlStringA& bytes) {
    AppendRange(bytes.GetString(), bytes.GetLength());
    return *this;
}

CAtlStringA& CAtlStringA::operator+=(char byte) {
    AppendRange(&byte, 1);
    return *this;
}

CAtlStringA operator+(const CAtlStringA& a, const CAtlStringA& b) {
    return CAtlStringA::Joined(a.GetString(), a.GetLength(), b.GetString(), b.GetLength());
}
