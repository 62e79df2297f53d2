// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The folder that is checked: its files, what each of them is, and which addresses lead to them.
#pragma once

#include "catalog/CCatalogFile.h"
#include "catalog/CSite.h"
#include "platform/desktop/IEnvironment.h"

#include <boost/shared_ptr.hpp>
#include <memory>
#include <optional>
#include <vector>

// A file that another one names by its address.
struct Reference {
    const CCatalogFile* from = nullptr;
    int line = 0;
    // What is fetched, as the program puts it together.
    QString address;
    // What it is read as.
    FileKind kind = FileKind::UNKNOWN;
};

// Reads the folder with all below it, once, but for hidden files and links to folders. GUI thread only.
//
// A file is what the program would come to read it as: by its name where the name is fixed or a product list
// gives it, else by the address by which another file names it, else by what is in it.
class CCatalog {
public:
    // The address at which the folder is published; when it is empty, the product lists say where which part
    // of the folder is.
    CCatalog(const QString& folder, const QString& siteAddress);

    const std::vector<std::unique_ptr<CCatalogFile>>& GetFiles() const { return files_; }
    std::vector<const CCatalogFile*> FilesOf(FileKind kind) const;
    // Null when there is none with that path.
    const CCatalogFile* Find(const QString& path) const;

    const std::vector<Reference>& GetReferences() const { return references_; }
    bool HasSite() const { return site_.has_value(); }
    // The path of the file that is published at an address, whether it exists or not; nothing when the site
    // is not known, or the address does not belong to it.
    std::optional<QString> FileOf(const QString& address) const;
    // The address of a file that the program fetches from the site and reads as XML; nothing for all others,
    // the copy of a product list that was installed among them.
    std::optional<QString> PublishedAt(const CCatalogFile& file) const;
    // A world in which nothing is installed; today is today.
    const boost::shared_ptr<IEnvironment>& GetEnvironment() const { return environment_; }

private:
    void RecogniseByName();
    void RecogniseListed(const CCatalogFile& list);
    void RecogniseByContents();
    void CollectReferences();
    void FindSite();
    bool IsInstalledCopy(const CCatalogFile& list) const;
    void RecogniseReferenced();
    CCatalogFile* FindFile(const QString& path) const;

    std::vector<std::unique_ptr<CCatalogFile>> files_;
    std::vector<Reference> references_;
    std::optional<CSite> site_;
    boost::shared_ptr<IEnvironment> environment_;
};
