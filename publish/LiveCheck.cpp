// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "publish/LiveCheck.h"

#include "net/Transfer.h"
#include "products/DescriptionFormat.h"
#include "signing/CInstallerSeal.h"

#include <QCryptographicHash>
#include <QFile>
#include <algorithm>
#include <iterator>
#include <set>

namespace {

QByteArray Digest(const QString& path) {
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result() : QByteArray();
}

// The installers that the program's own descriptions offer, and their signatures, as far as they are there.
std::set<QString> OwnInstallers(const CCatalog& catalog) {
    std::set<QString> paths;
    for (const Reference& reference : catalog.GetReferences()) {
        if (reference.from->GetName() != QString::fromWCharArray(DescriptionFormat::OWN_FILE))
            continue;
        const auto description = catalog.FileOf(reference.address);
        for (const Reference& link : catalog.GetLinks()) {
            const auto path = catalog.FileOf(link.address);
            if (link.kind != FileKind::INSTALLER || link.from->GetPath() != description || !path)
                continue;
            const QString signature = *path + QString::fromWCharArray(CInstallerSeal::SIGNATURE_EXTENSION);
            for (const QString& each : {signature, *path})
                if (catalog.Find(each))
                    paths.insert(each);
        }
    }
    return paths;
}

std::vector<QString> XmlFiles(const CCatalog& catalog) {
    std::vector<QString> paths;
    for (const auto& file : catalog.GetFiles())
        if (catalog.PublishedAt(*file))
            paths.push_back(file->GetPath());
    return paths;
}

}  // namespace

CFindings CheckLive(const CCatalog& catalog, const QString& address, Downloader& downloader) {
    const auto& site = catalog.GetSite();
    if (!site)
        return {};
    const CSite live(address, site->GetFolder());
    const auto addressOf = [&](const QString& path) {
        return CAtlString(live.AddressOf(path).value_or(QString()));
    };
    const std::vector<QString> files = XmlFiles(catalog);
    std::vector<CAtlString> addresses;
    std::transform(files.begin(), files.end(), std::back_inserter(addresses), addressOf);
    TransferRecord last;
    downloader.SetTransferCallback([&last](const TransferRecord& record) { last = record; });
    CFindings findings;
    if (files.empty())
        findings.Add(site->GetFolder(), 0, Code::EMPTY_FOLDER, "programs fetch no file of this folder");
    const auto compare = [&](const QString& path, const CVardoFilePath& file) {
        const QString asked = addressOf(path).ToQString();
        if (file.IsEmpty())
            findings.Add(path, 0, Code::NOT_SERVED,
                         QString("\"%1\" cannot be fetched: %2").arg(asked, FailureText(last)));
        else if (Digest(file.GetFilePathString().ToQString()) != Digest(path))
            findings.Add(path, 0, Code::SERVED_OTHERWISE,
                         QString("what \"%1\" gives differs from this file").arg(asked));
        file.Delete();
    };
    downloader.FetchAhead(addresses);
    for (const QString& path : files)
        compare(path, CVardoFilePath(downloader.Download(addressOf(path))));
    // They may be large, and no transfer of theirs runs ahead.
    for (const QString& path : OwnInstallers(catalog))
        compare(path, CVardoFilePath(downloader.DownloadInstaller(addressOf(path), {})));
    downloader.FetchAhead({});
    downloader.SetTransferCallback({});
    return findings;
}
