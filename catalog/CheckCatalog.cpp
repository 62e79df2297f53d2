// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/Checks.h"
#include "catalog/FileKinds.h"

#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <algorithm>
#include <utility>
#include <vector>

namespace {

void CheckComment(const CCatalogFile& file, int line, const QString& comment, CFindings& findings) {
    // The tool, not the maker, writes the text of a signature.
    if (comment.contains(QLatin1String("--")) && !comment.startsWith(QLatin1String("minisign")))
        findings.Add(file.GetPath(), line, Code::DOUBLE_HYPHEN,
                     "this comment holds \"--\": the program reads the file, but it is no XML");
}

void CheckAmpersand(const CCatalogFile& file, int line, const QString& entity, CFindings& findings) {
    findings.Add(file.GetPath(), line, Code::LONE_AMPERSAND,
                 entity.isEmpty()
                     ? QString("an \"&\" that begins no entity is lost: write \"&amp;\"")
                     : QString("the entity \"%1\" is unknown: write the character itself").arg(entity));
}

// Finds what the parser accepts without a word: an "&" that begins no entity, which it drops, and a comment
// that holds "--". Comments and CDATA may hold any "&".
void CheckMarks(const CCatalogFile& file, CFindings& findings) {
    static const QRegularExpression piece(
        "<!--(.*?)-->|<!\\[CDATA\\[.*?\\]\\]>|"
        "(&)(?!(?:amp|lt|gt|quot|apos|#0*[1-9][0-9]*|#x0*[1-9a-fA-F][0-9a-fA-F]*);)(?:([A-Za-z][A-Za-z0-9]*);"
        ")?",
        QRegularExpression::DotMatchesEverythingOption);
    // A byte becomes a character, which is enough to find ASCII.
    const QString text = ReadFileBytes(file.GetFilePath()).ToQString();
    int line = 1;
    qsizetype countedTo = 0;
    for (auto matches = piece.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        line += static_cast<int>(
            QStringView(text).sliced(countedTo, match.capturedStart() - countedTo).count(u'\n'));
        countedTo = match.capturedStart();
        if (match.hasCaptured(2))
            CheckAmpersand(file, line, match.captured(3), findings);
        else
            CheckComment(file, line, match.captured(1), findings);
    }
}

// Reads a malformed file with a reader that explains faults better than the program's. Returns the reader's
// reason, or which element is not closed, with the line where the element or the wrong tag begins.
XmlFault Diagnose(const CCatalogFile& file) {
    if (file.GetFault().line == 0)
        return file.GetFault();
    // The program lets an unknown entity pass.
    const QString text = ReadFileBytes(file.GetFilePath()).ToQString().replace(u'&', u' ');
    QXmlStreamReader reader(text);
    // Of the tag that ends at the offset.
    const auto lineOf = [&](qint64 offset) {
        const qsizetype tag = text.lastIndexOf(u'<', static_cast<qsizetype>(std::max<qint64>(offset - 1, 0)));
        return 1 + static_cast<int>(QStringView(text).left(tag).count(u'\n'));
    };
    std::vector<std::pair<QString, qint64>> open;
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::StartElement)
            open.emplace_back(reader.qualifiedName().toString(), reader.characterOffset());
        else if (token == QXmlStreamReader::EndElement)
            open.pop_back();
    }
    if (!reader.hasError())
        return file.GetFault();
    const QString reason = reader.errorString();
    const bool isUnclosed = reader.error() == QXmlStreamReader::PrematureEndOfDocumentError ||
                            reason.contains(QLatin1String("tag mismatch"));
    if (isUnclosed && !open.empty())
        return {lineOf(open.back().second),
                QString("<%1>, which begins here, is not closed").arg(open.back().first).toStdString()};
    return {lineOf(reader.characterOffset()), reason.toStdString()};
}

// Finds text and unknown marks beside elements, such as an element that lost its "<", which may be the only
// one. The maker may have elements of text alone that the program does not know.
void CheckStrays(const CCatalogFile& file, const TiXmlNode& parent, CFindings& findings) {
    const bool hasElements = parent.FirstChildElement() != nullptr;
    for (const TiXmlNode* node = parent.FirstChild(); node; node = node->NextSibling()) {
        const bool isText = node->ToText() || node->ToUnknown();
        if (isText && (hasElements || node->ValueStr().find('=') != std::string::npos))
            findings.Add(file.GetPath(), node->Row(), Code::STRAY,
                         "the program passes over this text, which is no element");
        CheckStrays(file, *node, findings);
    }
}

// The program reads one root, and the parser stops at the first text behind it.
void CheckEnd(const CCatalogFile& file, CFindings& findings) {
    const char* const text = "this stands behind the end of the root: the program does not read it";
    for (const TiXmlNode* node = file.GetRoot()->NextSibling(); node; node = node->NextSibling())
        if (!node->ToComment())
            findings.Add(file.GetPath(), node->Row(), Code::STRAY, text);
    if (!file.GetFault().reason.empty())
        findings.Add(file.GetPath(), file.GetFault().line, Code::STRAY, text);
}

// The program reads settings from folders with the organisation's name.
bool IsSettings(const CCatalogFile& file) {
    return file.GetName().endsWith(QLatin1String(".conf")) &&
           file.GetFolder().endsWith(QLatin1String("VARDO Technologies"));
}

// A comment and a line longer than those of public keys (56 bytes) and of signatures (100).
bool IsSecretKey(const CCatalogFile& file) {
    constexpr qint64 LONGEST_LINE = 1024;
    QFile text(file.GetPath());
    return text.open(QFile::ReadOnly) && text.readLine(LONGEST_LINE).startsWith("untrusted comment:") &&
           text.readLine(LONGEST_LINE).trimmed().size() > 100;
}

void CheckForm(const CCatalogFile& file, CFindings& findings) {
    const FileKind kind = file.GetKind();
    const bool mayBeXml = IsXmlKind(kind) || (kind == FileKind::UNKNOWN && IsXmlName(file.GetName()));
    if (mayBeXml && !file.GetRoot()) {
        const XmlFault fault = Diagnose(file);
        findings.Add(file.GetPath(), fault.line, Code::MALFORMED,
                     QString("the program takes this file for missing: %1").arg(fault.reason.c_str()));
        const CAtlStringA bytes = ReadFileBytes(file.GetFilePath());
        if (!QUtf8StringView(bytes.begin(), bytes.end()).isValidUtf8())
            findings.Add(file.GetPath(), fault.line, Code::NOT_UTF8,
                         "the file is not UTF-8, which may be the reason");
    } else if (!IsXmlKind(kind) && IsSecretKey(file)) {
        findings.Add(file.GetPath(), 0, Code::SECRET_KEY,
                     "this is a secret key: with it, everybody could sign; keep it elsewhere");
    } else if (kind == FileKind::UNKNOWN && !IsSettings(file)) {
        findings.Add(file.GetPath(), 0, Code::UNKNOWN_FILE, "the program reads no such file");
    } else if (IsXmlKind(kind)) {
        CheckMarks(file, findings);
        CheckStrays(file, *file.GetRoot(), findings);
        CheckEnd(file, findings);
    }
}

}  // namespace

CFindings CheckCatalog(const CCatalog& catalog) {
    CFindings findings;
    if (catalog.GetFiles().empty())
        findings.Add(catalog.GetFolder(), 0, Code::EMPTY_FOLDER, "the folder holds no file");
    for (const QString& folder : catalog.GetUnreadFolders())
        findings.Add(folder, 0, Code::UNREAD_FOLDER,
                     "this folder is a link to another, or may not be read: its files were not looked at");
    for (const auto& file : catalog.GetFiles())
        CheckForm(*file, findings);
    CheckProductLists(catalog, findings);
    CheckLocalDescriptions(catalog, findings);
    CheckRemoteDescriptions(catalog, findings);
    CheckNotifications(catalog, findings);
    CheckGalleries(catalog, findings);
    CheckLanguageTables(catalog, findings);
    CheckStringsFiles(catalog, findings);
    CheckReferences(catalog, findings);
    CheckInstallers(catalog, findings);
    CheckSignatures(catalog, findings);
    return findings;
}
