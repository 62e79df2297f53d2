// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/text/CAtlString.h"

#include <algorithm>
#include <cstdint>
#include <cwchar>
#include <string>
#include <string_view>

#include "platform/text/CAtlStringA.h"
#include "platform/text/TextConversion.h"

namespace {

CAtlString Decoded(std::string_view utf8) {
    const std::wstring text = DecodeUtf8(utf8);
    return CAtlString(text.data(), static_cast<int>(text.size()));
}

// Whether UTF-16 has one unit of the same number; Qt converts the surrogates and all above them.
bool IsOneUtf16Unit(wchar_t ch) {
    return static_cast<std::uint32_t>(ch) < 0xD800;
}

}  // namespace

CAtlString::CAtlString(const wchar_t* text) : CSharedText(text, LengthOf(text)) {}

CAtlString::CAtlString(const wchar_t* text, int length) : CSharedText(text, length) {}

CAtlString::CAtlString(const char* utf8) : CAtlString(Decoded(utf8 ? utf8 : "")) {}

CAtlString::CAtlString(const CAtlStringA& utf8) : CAtlString(Decoded({utf8.begin(), utf8.end()})) {}

CAtlString::CAtlString(const QString& text) {
    if (!text.isEmpty())
        ReleaseBuffer(static_cast<int>(text.toWCharArray(GetBuffer(static_cast<int>(text.size())))));
}

QString CAtlString::ToQString() const {
    const std::wstring_view text(GetString());
    // QString's own conversion makes a converter object: for an address it takes ten times as long.
    if (!std::all_of(text.begin(), text.end(), IsOneUtf16Unit))
        return QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size()));
    QString copy(static_cast<qsizetype>(text.size()), Qt::Uninitialized);
    std::transform(text.begin(), text.end(), copy.begin(),
                   [](wchar_t ch) { return QChar(static_cast<char16_t>(ch)); });
    return copy;
}

CAtlString& CAtlString::operator+=(const CAtlString& text) {
    // Keeps the characters, which may be this text's own.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const CAtlString source(text);
    Append(source.GetString(), source.GetLength());
    return *this;
}

CAtlString& CAtlString::operator+=(wchar_t ch) {
    Append(&ch, 1);
    return *this;
}

CAtlString operator+(const CAtlString& a, const CAtlString& b) {
    // The copy shares its array, so that appending to it allocates the sum at once.
    CAtlString sum(a);
    sum += b;
    return sum;
}

int CAtlString::CompareNoCase(const CAtlString& other) const {
    return ::wcscasecmp(GetString(), other.GetString());
}

int CAtlString::ReverseFind(wchar_t ch) const {
    return ToIndex(GetView().rfind(ch));
}

int CAtlString::FindOneOf(const CAtlString& set) const {
    return ToIndex(GetView().find_first_of(set.GetView()));
}

CAtlString CAtlString::Left(int count) const {
    return Mid(0, count);
}

CAtlString CAtlString::Right(int count) const {
    return Mid(GetLength() - std::clamp(count, 0, GetLength()));
}

CAtlString CAtlString::Mid(int first, int count) const {
    first = std::clamp(first, 0, GetLength());
    count = std::clamp(count, 0, GetLength() - first);
    return count == GetLength() ? *this : CAtlString(GetString() + first, count);
}

CAtlString CAtlString::Mid(int first) const {
    return Mid(first, GetLength());
}

CAtlString& CAtlString::TrimLeft(wchar_t ch) {
    const std::size_t run = std::min(GetView().find_first_not_of(ch), GetView().size());
    return *this = Mid(static_cast<int>(run));
}

CAtlString& CAtlString::TrimRight(wchar_t ch) {
    return *this = Left(ToIndex(GetView().find_last_not_of(ch)) + 1);
}

int CAtlString::Replace(wchar_t old, wchar_t now) {
    const auto count = static_cast<int>(std::count(begin(), end(), old));
    if (old == now || count == 0)
        return 0;
    wchar_t* const text = GetBuffer(GetLength());
    std::replace(text, text + GetLength(), old, now);
    return count;
}

int CAtlString::Delete(int index, int count) {
    const int length = GetLength();
    index = std::max(index, 0);
    if (count > 0 && index < length)
        *this = Left(index) + Right(length - index - std::min(count, length - index));
    return length;
}
