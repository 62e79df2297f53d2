// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "publish/LiveCheck.h"

#include "net/Transfer.h"
#include "products/DescriptionFormat.h"
#include "signing/CInstallerSeal.h"

#include <QCryptographicHash>
#include <QFile>

namespace {

QByteArray Digest(const QString& path) {
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result() : QByteArray();
}

// The installers that the program's own descriptions offer, and their signatures, as far as they are there.
std::vector<QString> OwnInstallers(const CCatalog& catalog) {
    std::vector<QString> paths;
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
                    paths.push_back(each);
        }
    }
    return paths;
}

std::vector<QString> Fetched(const CCatalog& catalog) {
    std::vector<QString> paths;
    for (const auto& file : catalog.GetFiles())
        if (catalog.PublishedAt(*file))
            paths.push_back(file->GetPath());
    for (const QString& path : OwnInstallers(catalog))
        paths.push_back(path);
    return paths;
}

QString Reason(const TransferRecord& record) {
    const bool isRedirected = record.status / 100 == 3;
    return FailureText(record) +
           (isRedirected ? QStringLiteral("; it redirects, and programs do not follow") : QString());
}

}  // namespace

CFindings CheckLive(const CCatalog& catalog, const QString& address, Downloader& downloader) {
    const auto& site = catalog.GetSite();
    if (!site)
        return {};
    const CSite live(address, site->GetFolder());
    const std::vector<QString> paths = Fetched(catalog);
    std::vector<CAtlString> addresses;
    addresses.reserve(paths.size());
    for (const QString& path : paths)
        addresses.emplace_back(live.AddressOf(path).value_or(QString()));
    TransferRecord last;
    downloader.SetTransferCallback([&last](const TransferRecord& record) { last = record; });
    downloader.FetchAhead(addresses);
    CFindings findings;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const QString asked = addresses[i].ToQString();
        // As an installer: a program's own may be large.
        const CVardoFilePath file(catalog.Find(paths[i])->GetKind() == FileKind::INSTALLER
                                      ? downloader.DownloadInstaller(addresses[i], {})
                                      : downloader.Download(addresses[i]));
        if (file.IsEmpty())
            findings.Add(paths[i], 0, Code::NOT_SERVED,
                         QStringLiteral("\"%1\" cannot be fetched: %2").arg(asked, Reason(last)));
        else if (Digest(file.GetFilePathString().ToQString()) != Digest(paths[i]))
            findings.Add(paths[i], 0, Code::SERVED_OTHERWISE,
                         QStringLiteral("what \"%1\" gives differs from this file").arg(asked));
        file.Delete();
    }
    downloader.FetchAhead({});
    downloader.SetTransferCallback({});
    return findings;
}
