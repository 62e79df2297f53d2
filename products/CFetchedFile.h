// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The one way to get an XML file from the network.
#pragma once

#include "net/IDownloader.h"
#include "platform/files/CVardoDirectoryPath.h"
#include "platform/files/CVardoFilePath.h"
#include "platform/text/CAtlStringA.h"
#include "products/Verdict.h"

#include <QCoreApplication>
#include <QDate>

// Fetches a file, judges its bytes before they are parsed, and deletes the file in its destructor. With the
// maker's key for XML files in the shared data folder, a file without a good signature does not count.
// GUI thread only.
class CFetchedFile {
    Q_DECLARE_TR_FUNCTIONS(CFetchedFile)

public:
    // What messages to the user call the file.
    enum class Kind { DESCRIPTION, LIST };

    // Serves events while it waits, as IDownloader::Download does. Without a downloader nothing is fetched.
    // The downloader's failure callback is told of a refused file.
    CFetchedFile(IDownloader* downloader, const CAtlString& address, const CVardoDirectoryPath& sharedFolder,
                 Kind kind = Kind::DESCRIPTION);
    ~CFetchedFile() { file_.Delete(); }
    CFetchedFile(const CFetchedFile&) = delete;
    CFetchedFile& operator=(const CFetchedFile&) = delete;

    // COUNTS unless the bytes may not be parsed; a file that cannot be read has none.
    Verdict GetVerdict() const { return verdict_; }
    // Empty unless the file counts.
    const CAtlStringA& GetBytes() const { return bytes_; }
    // Where the file lies as long as this object lives.
    const CVardoFilePath& GetPath() const { return file_; }
    // Why the file was refused, with the host, in words for the user; empty when it was not.
    const QString& GetRefusal() const { return refusal_; }

    // What the maker's keys in that folder say of bytes from an address. With an invalid date the signature's
    // last day does not count.
    static Verdict Judge(const CAtlStringA& bytes, const CAtlString& address,
                         const CVardoDirectoryPath& sharedFolder, const QDate& today);

private:
    QString Refusal(const CAtlString& address, Kind kind) const;

    CVardoFilePath file_;
    Verdict verdict_ = Verdict::NOT_FETCHED;
    CAtlStringA bytes_;
    QString refusal_;
};
