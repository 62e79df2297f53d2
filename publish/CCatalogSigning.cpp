// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "publish/CCatalogSigning.h"

#include "catalog/Checks.h"
#include "platform/files/CVardoDirectoryPath.h"
#include "platform/files/FileReplacement.h"
#include "platform/text/PrintableText.h"
#include "products/CUpdateXmlReader.h"
#include "signing/CCatalogueSeal.h"
#include "signing/CMinisignSignature.h"

#include <QFileInfo>
#include <algorithm>
#include <ostream>

#include <sys/stat.h>
#include <unistd.h>

namespace {

bool IsAboutSignatures(const FindingCode& code) {
    const std::string_view about[] = {Code::UNSIGNED_FILE.name, Code::SIGNED_ELSEWHERE.name,
                                      Code::SIGNATURE_OVER.name, Code::UNSIGNED_INSTALLER.name};
    return std::find(std::begin(about), std::end(about), code.name) != std::end(about);
}

// Lists lead to all others.
std::vector<const CCatalogFile*> InOrder(const CCatalog& catalog) {
    std::vector<const CCatalogFile*> files;
    for (const auto& file : catalog.GetFiles())
        if (catalog.PublishedAt(*file))
            files.push_back(file.get());
    std::stable_partition(files.begin(), files.end(),
                          [](const CCatalogFile* file) { return file->GetKind() != FileKind::PRODUCT_LIST; });
    return files;
}

bool Replace(const SignedFile& file) {
    struct stat status {};
    const QByteArray path = file.path.toLocal8Bit();
    const bool isThere = stat(path.constData(), &status) == 0;
    const mode_t mode = isThere ? status.st_mode & 07777U : 0644U;
    if (!ReplaceFile({file.contents.data(), static_cast<std::size_t>(file.contents.size())},
                     CVardoFilePath(CAtlString(file.path)), mode))
        return false;
    // Root gives the file back to the web server's user or group, where the file system allows that.
    [[maybe_unused]] const bool isGiven =
        isThere && geteuid() == 0 && chown(path.constData(), status.st_uid, status.st_gid) == 0;
    return true;
}

}  // namespace

QString CCatalogSigning::Obstacle(const CCatalog& catalog, std::ostream& err) {
    if (CUpdateXmlReader::IsTestMode())
        return QString("nothing was signed: remove ") + CUpdateXmlReader::TEST_MARKER.ToQString();
    CFindings errors;
    for (const Finding& finding : CheckCatalog(catalog).Sorted())
        if (finding.code.severity == Severity::ERROR && !IsAboutSignatures(finding.code))
            errors.Add(finding.file, finding.line, finding.code, finding.text);
    err << errors.ToText().toStdString();
    return errors.Count(Severity::ERROR) > 0 ? QString("nothing was signed") : QString();
}

QString CCatalogSigning::ReplaceAll(const std::vector<SignedFile>& files, std::ostream& out) {
    for (const SignedFile& file : files) {
        if (!Replace(file))
            return QString("\"%1\" cannot be written").arg(file.path);
        out << file.lines.toStdString();
    }
    return {};
}

QString CCatalogSigning::DaysProblem(int days) {
    return days >= 1 && days <= MOST_DAYS ? QString()
                                          : QString("--days takes a number from 1 to %1").arg(MOST_DAYS);
}

CCatalogSigning::CCatalogSigning(const CCatalog& catalog, std::unique_ptr<CMinisignTool> tool, int days)
    : catalog_(catalog), tool_(std::move(tool)), lastDay_(TodayInUtc().addDays(days).toString("yyyyMMdd")) {}

std::optional<std::vector<SignedFile>> CCatalogSigning::SignAll() {
    std::vector<SignedFile> all;
    for (const CCatalogFile* file : InOrder(catalog_)) {
        const auto address = catalog_.PublishedAt(*file);
        const QByteArray contents = address ? Sign(*file, *address) : QByteArray();
        if (contents.isEmpty())
            return std::nullopt;
        all.push_back({file->GetPath(), contents,
                       QString("%1: signed until %2\n").arg(Printable(file->GetPath()), lastDay_)});
    }
    if (all.empty())
        problem_ = "nothing here is published, or --site is needed to tell where";
    return all.empty() ? std::nullopt : std::optional(all);
}

// Empty when that failed.
QByteArray CCatalogSigning::Sign(const CCatalogFile& file, const QString& address) {
    if (QFileInfo(file.GetPath()).isSymLink()) {
        problem_ = QString("\"%1\" is a link: put the file itself there").arg(file.GetPath());
        return {};
    }
    const CAtlStringA bytes = ReadFileBytes(file.GetFilePath());
    const std::string_view old = CCatalogueSeal::WithoutSignature({bytes.begin(), bytes.end()});
    QByteArray contents(old.data(), static_cast<qsizetype>(old.size()));
    if (!contents.endsWith('\n'))
        contents += '\n';
    if (TiXmlDocument document;
        !ParseXml({contents.data(), static_cast<int>(contents.size())}, TIXML_DEFAULT_ENCODING, document)) {
        problem_ = QString(
                       "\"%1\" has a comment that begins with \"%2\", as signatures alone may: begin it with "
                       "another word")
                       .arg(file.GetPath(), QString::fromLatin1(CCatalogueSeal::COMMENT.data()));
        return {};
    }
    const std::string path = CCatalogueSeal::PathOf(CAtlString(address));
    const auto signature =
        tool_->Sign(contents, QString("path:%1 until:%2").arg(QString::fromStdString(path), lastDay_));
    if (!signature) {
        problem_ = QString("minisign: ") + tool_->GetProblem();
        return {};
    }
    contents += QByteArray(CCatalogueSeal::COMMENT.data()) + '\n' + *signature + "-->\n";
    return IsGood(file, contents, address) ? contents : QByteArray();
}

// Whether installations with the keys of the folder, if there are any, will take it.
bool CCatalogSigning::IsGood(const CCatalogFile& file, const QByteArray& contents, const QString& address) {
    for (const CCatalogFile* key : catalog_.FilesOf(FileKind::PUBLIC_KEY)) {
        const CCatalogueSeal seal{CVardoDirectoryPath(CAtlString(key->GetFolder()))};
        if (seal.Judge({contents.data(), static_cast<std::size_t>(contents.size())}, CAtlString(address),
                       TodayInUtc()) == CCatalogueSeal::Judgement::GOOD)
            continue;
        problem_ = QString(
                       "\"%1\": with this secret key, installations that have the key in \"%2\" "
                       "would refuse the file")
                       .arg(file.GetPath(), key->GetFolder());
        return false;
    }
    return true;
}
