// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/Addresses.h"

#include <algorithm>
#include <cwchar>
#include <iterator>

#include "platform/CVardoFilePath.h"
#include "platform/TextConversion.h"

namespace {

constexpr wchar_t REPLACEMENT_CHARACTER = 0xFFFD;
constexpr int LONGEST_UTF8_SEQUENCE = 4;
constexpr int LONGEST_EXTENSION = 32;

bool IsForAddresses(wchar_t ch) {
    return ch > L' ' && ch < 0x7F && std::wcschr(L"\"'`\\<>^{|}", ch) == nullptr;
}

void AppendEncoded(CAtlString& encoded, wchar_t ch) {
    char bytes[LONGEST_UTF8_SEQUENCE];
    int count = EncodeUtf8(&ch, 1, bytes);
    if (count == 0)
        count = EncodeUtf8(&REPLACEMENT_CHARACTER, 1, bytes);
    for (int i = 0; i < count; ++i)
        encoded.AppendFormat(L"%%%02X", static_cast<unsigned char>(bytes[i]));
}

}  // namespace

CAtlString WithTrailingSlash(const CAtlString& folder) {
    const int length = folder.GetLength();
    return length == 0 || folder[length - 1] == L'/' ? folder : folder + L"/";
}

CAtlString JoinTrimmed(const CAtlString& folder, const CAtlString& fileName) {
    CAtlString trimmed(folder);
    trimmed.TrimRight(L'/');
    trimmed.TrimRight(L'\\');
    return trimmed + L"/" + fileName;
}

CAtlString AddressExtension(const CAtlString& address) {
    const int end = address.FindOneOf(L"?#");
    const CVardoFilePath file(end < 0 ? address : address.Left(end));
    return file.GetExtension().Left(LONGEST_EXTENSION);
}

CAtlString PercentEncode(const CAtlString& address) {
    CAtlString encoded;
    for (const wchar_t ch : address)
        if (IsForAddresses(ch))
            encoded += ch;
        else
            AppendEncoded(encoded, ch);
    return encoded;
}

bool IsWebAddress(const CAtlString& address) {
    static const CAtlString BEGINNINGS[] = {L"http://", L"https://", L"ftp://"};
    return std::any_of(std::begin(BEGINNINGS), std::end(BEGINNINGS), [&](const CAtlString& beginning) {
        return address.GetLength() > beginning.GetLength() &&
               address.Left(beginning.GetLength()).CompareNoCase(beginning) == 0;
    });
}
