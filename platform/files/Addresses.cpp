// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/files/Addresses.h"

#include <QRegularExpression>
#include <cwchar>
#include <string>
#include <string_view>

#include "platform/files/CVardoFilePath.h"
#include "platform/text/TextConversion.h"

namespace {

constexpr std::wstring_view REPLACEMENT_CHARACTER = L"\uFFFD";
constexpr int LONGEST_EXTENSION = 32;

bool IsForAddresses(wchar_t ch) {
    return ch > L' ' && ch < 0x7F && std::wcschr(L"\"'`\\<>^{|}", ch) == nullptr;
}

void AppendEncoded(std::wstring& encoded, wchar_t ch) {
    constexpr wchar_t DIGITS[] = L"0123456789ABCDEF";
    const std::string bytes = EncodeUtf8({&ch, 1});
    for (const char each : bytes.empty() ? EncodeUtf8(REPLACEMENT_CHARACTER) : bytes) {
        const auto byte = static_cast<unsigned char>(each);
        encoded += {L'%', DIGITS[byte >> 4], DIGITS[byte & 0xF]};
    }
}

bool HasWebScheme(const QString& address) {
    static const QRegularExpression scheme("^(https?|ftp)://.", QRegularExpression::CaseInsensitiveOption);
    return scheme.match(address).hasMatch();
}

// What stands before a colon may be a scheme as well as a host.
bool BeginsWithHost(const QString& page) {
    static const QRegularExpression beginning(R"(^([\p{L}\p{N}][\p{L}\p{M}\p{N}.-]*)(:[0-9]+)?([/?#]|\z))");
    const QRegularExpressionMatch match = beginning.match(page);
    const QString host = match.captured(1);
    const bool hasPort = match.capturedLength(2) > 0;
    return match.hasMatch() && (!hasPort || host.contains(u'.') || host == QLatin1String("localhost"));
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
    std::wstring encoded;
    for (const wchar_t ch : address)
        if (IsForAddresses(ch))
            encoded += ch;
        else
            AppendEncoded(encoded, ch);
    return CAtlString(encoded.c_str());
}

CAtlString WebAddress(const CAtlString& page) {
    CAtlString encoded = PercentEncode(page);
    if (HasWebScheme(encoded.ToQString()))
        return encoded;
    return BeginsWithHost(page.ToQString()) ? L"http://" + encoded : CAtlString();
}

QString WithoutPassword(const CAtlString& address) {
    // Up to the last "@" before a path; without one, and without a port there, up to the last of all.
    static const QRegularExpression password(
        R"(((?:^(?:[A-Za-z][^/?#:@]*:)?/?|//)[^/?#:\[]*):(?:[^/?#]*@|(?!\d*(?:[/?#]|$)).*@))",
        QRegularExpression::DotMatchesEverythingOption);
    // From each "//" the expression would look for an "@" to the end of a long text that has none.
    const QString text = address.ToQString();
    const qsizetype end = text.lastIndexOf(u'@') + 1;
    return text.left(end).replace(password, "\\1@") + text.mid(end);
}
