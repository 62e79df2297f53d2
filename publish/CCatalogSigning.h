// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Signatures for the XML files of a site.
#pragma once

#include "catalog/CCatalog.h"
#include "publish/CMinisignTool.h"

#include <memory>

// A file, its new contents, and the lines that tell that it has them.
struct SignedFile {
    QString path;
    QByteArray contents;
    QString lines;
};

// Makes all signatures before it writes a file, so that a failure of the tool changes nothing. One thread.
class CCatalogSigning {
public:
    // Signatures are good for USUAL_DAYS, or for as many as the maker asks for, up to MOST_DAYS.
    static constexpr int USUAL_DAYS = 90;
    static constexpr int MOST_DAYS = 3650;
    // Why signatures cannot be good for so many days, as the value of --days; empty when they can.
    static QString DaysProblem(int days);

    // Why nothing in the folder may be signed; empty when all may be. Writes the errors that signing cannot
    // mend to err.
    static QString Obstacle(const CCatalog& catalog, std::ostream& err);
    // Puts the files in their places, in their order and each in one step, with the mode of the one that is
    // there (for root, also its owner and group, if it may), else 0644, and writes their lines to out.
    // Returns why one could not be written, and then leaves the rest as they are; empty on success. The files
    // before it may be signed already, which does no harm.
    static QString ReplaceAll(const std::vector<SignedFile>& files, std::ostream& out);

    // The catalog must outlive this object.
    CCatalogSigning(const CCatalog& catalog, std::unique_ptr<CMinisignTool> tool, int days);

    // The new contents of each published file, in the order to publish them: lists come last. Nothing when
    // one cannot be signed.
    std::optional<std::vector<SignedFile>> SignAll();
    // Why that failed.
    const QString& GetProblem() const { return problem_; }

private:
    QByteArray Sign(const CCatalogFile& file, const QString& address);
    bool IsGood(const CCatalogFile& file, const QByteArray& contents, const QString& address);

    const CCatalog& catalog_;
    std::unique_ptr<CMinisignTool> tool_;
    // As it stands behind "until:".
    QString lastDay_;
    QString problem_;
};
