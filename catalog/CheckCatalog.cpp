// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/Checks.h"
#include "catalog/FileKinds.h"

#include <QRegularExpression>

namespace {

// The parser takes an "&" that begins no entity for nothing. Comments and CDATA may hold any.
void CheckAmpersands(const CCatalogFile& file, CFindings& findings) {
    static const QRegularExpression piece(
        QStringLiteral("<!--.*?-->|<!\\[CDATA\\[.*?\\]\\]>|"
                       "(&)(?!(?:amp|lt|gt|quot|apos|#[0-9]+|#x[0-9a-fA-F]+);)"),
        QRegularExpression::DotMatchesEverythingOption);
    // Byte by byte: only ASCII is looked for.
    const QString text = ReadFileBytes(file.GetFilePath()).ToQString();
    int line = 1;
    qsizetype countedTo = 0;
    for (auto matches = piece.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        if (!match.hasCaptured(1))
            continue;
        line += static_cast<int>(
            QStringView(text).sliced(countedTo, match.capturedStart() - countedTo).count(u'\n'));
        countedTo = match.capturedStart();
        findings.Add(file.GetPath(), line, Code::LONE_AMPERSAND,
                     QStringLiteral("an \"&\" that begins no entity is lost: write \"&amp;\""));
    }
}

void CheckForm(const CCatalogFile& file, CFindings& findings) {
    const bool isXml = IsXmlKind(file.GetKind());
    if ((isXml || IsXmlName(file.GetName())) && !file.GetRoot())
        findings.Add(file.GetPath(), file.GetFault().line, Code::MALFORMED,
                     QStringLiteral("the program takes this file for missing: %1")
                         .arg(QString::fromStdString(file.GetFault().reason)));
    else if (file.GetKind() == FileKind::UNKNOWN)
        findings.Add(file.GetPath(), 0, Code::UNKNOWN_FILE, QStringLiteral("the program reads no such file"));
    else if (isXml)
        CheckAmpersands(file, findings);
}

}  // namespace

CFindings CheckCatalog(const CCatalog& catalog) {
    CFindings findings;
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
    CheckSignatures(catalog, findings);
    return findings;
}
