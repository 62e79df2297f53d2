// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Where the files of a web site lie in the folder that is checked.
#pragma once

#include <QString>
#include <QUrl>
#include <optional>

// The address of a folder of the site, and the folder that is published there.
class CSite {
public:
    // The address of the folder ends in "/", or is taken as if it did.
    CSite(const QString& address, const QString& folder);

    // Ends in "/".
    QString GetAddress() const { return address_.toString(); }
    const QString& GetFolder() const { return folder_; }
    // The path of the file that is published at an address, whether it exists or not; nothing for an address
    // that does not belong to the site.
    std::optional<QString> FileOf(const QString& address) const;

    // The address at which a file is published, by its path; nothing for one that is not in the folder.
    std::optional<QString> AddressOf(const QString& path) const;

private:
    QUrl address_;
    QString folder_;
};
