// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "signing/CCatalogueSeal.h"

#include "signing/CMinisignSignature.h"

#include <QUrl>

namespace {

constexpr std::string_view COMMENT_END = "-->";
constexpr std::string_view WHITE_SPACE = " \t\r\n";

// Parses the signature in the comment that begins where the signed part of a file ends; nothing when anything
// but white space follows the comment, which ends at the first "-->" as in XML.
std::optional<CMinisignSignature> FindSignature(std::string_view comment) {
    if (!comment.starts_with(CCatalogueSeal::COMMENT))
        return std::nullopt;
    comment.remove_prefix(CCatalogueSeal::COMMENT.size());
    const std::size_t end = comment.find(COMMENT_END);
    if (!comment.starts_with('\n') || end == std::string_view::npos ||
        comment.find_first_not_of(WHITE_SPACE, end + COMMENT_END.size()) != std::string_view::npos)
        return std::nullopt;
    const std::string_view lines = comment.substr(1, end - 1);
    return lines.find('\r') == std::string_view::npos ? CMinisignSignature::Parse(lines) : std::nullopt;
}

}  // namespace

CCatalogueSeal::CCatalogueSeal(const CVardoDirectoryPath& sharedFolder)
    : keys_(CVardoDirectoryPath::Combine(sharedFolder, KEY_FILE)) {}

std::optional<CCatalogueSeal::Statement> CCatalogueSeal::Read(std::string_view file) const {
    const std::string_view content = WithoutSignature(file);
    const auto signature = FindSignature(file.substr(content.size()));
    if (!signature || !keys_.HasSigned(content, *signature))
        return std::nullopt;
    const auto path = signature->GetOnlyWord("path:");
    const auto until = signature->GetOnlyWord("until:");
    if (!path || !until || !ReadLastDay(*until).isValid())
        return std::nullopt;
    return Statement{*path, ReadLastDay(*until)};
}

CCatalogueSeal::Judgement CCatalogueSeal::Judge(std::string_view file, const CAtlString& address,
                                                const QDate& today) const {
    if (!IsRequired())
        return Judgement::GOOD;
    const auto statement = Read(file);
    if (!statement)
        return Judgement::UNSIGNED;
    if (statement->path != PathOf(address))
        return Judgement::WRONG_ADDRESS;
    return today.isValid() && IsOver(statement->until, today) ? Judgement::EXPIRED : Judgement::GOOD;
}

std::string CCatalogueSeal::PathOf(const CAtlString& address) {
    return QUrl(address.ToQString()).path(QUrl::FullyEncoded).toStdString();
}

std::string_view CCatalogueSeal::WithoutSignature(std::string_view file) {
    return file.substr(0, file.find(COMMENT));
}
