// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The folder that is checked: its files, what each of them is, and which addresses lead to them.
#pragma once

#include "catalog/CCatalogFile.h"
#include "catalog/CSite.h"
#include "platform/desktop/IEnvironment.h"

#include <QString>
#include <boost/shared_ptr.hpp>
#include <memory>
#include <optional>
#include <vector>

// A file that another one names by its address, or a page.
struct Reference {
    const CCatalogFile* from = nullptr;
    int line = 0;
    // The program fetches or opens this address, which it puts together.
    QString address;
    // The program reads the file as this kind.
    FileKind kind = FileKind::UNKNOWN;
};

// Reads the folder and all below it once, except hidden files and links to folders. GUI thread only.
//
// A file is what the program would come to read it as: by its name where the name is fixed or a product list
// gives it, else by the address by which another file names it, else by what is in it.
class CCatalog {
public:
    // siteFolder is folder or lies in it, under the same path, and is published at siteAddress. When that is
    // empty, the product lists say where each part of the folder is.
    CCatalog(const QString& folder, const QString& siteAddress, const QString& siteFolder);
    CCatalog(const QString& folder, const QString& siteAddress) : CCatalog(folder, siteAddress, folder) {}

    // As it was given, cleaned (QDir::cleanPath).
    const QString& GetFolder() const { return folder_; }
    // In the order of their paths. The catalogue owns them; they live as long.
    const std::vector<std::unique_ptr<CCatalogFile>>& GetFiles() const { return files_; }
    // The folders below it that are links to others, or may not be read: the catalogue lacks their files.
    const QStringList& GetUnreadFolders() const { return unreadFolders_; }
    // The files of a kind, in that order.
    std::vector<const CCatalogFile*> FilesOf(FileKind kind) const;
    // Those of them that have a root.
    std::vector<const CCatalogFile*> ReadableFilesOf(FileKind kind) const;
    // Null when no file has that path.
    CCatalogFile* Find(const QString& path) const;

    // The first other file whose path differs in case alone, or null.
    const CCatalogFile* FindInOtherCase(const QString& path) const;
    // Whether a file lies below that folder.
    bool HasFolder(const QString& path) const;

    // The files that the program reads as XML.
    const std::vector<Reference>& GetReferences() const { return references_; }
    // Pages and installers.
    const std::vector<Reference>& GetLinks() const { return links_; }
    // Where the files are published; nothing when neither the given address nor a product list tells it.
    const std::optional<CSite>& GetSite() const { return site_; }
    // The path of the file that is published at an address, whether it exists or not; nothing when the site
    // is not known, or the address does not belong to it.
    std::optional<QString> FileOf(const QString& address) const;
    // That file; null when it does not exist.
    CCatalogFile* FileAt(const QString& address) const;
    // The address of a file that the program fetches from the site and reads as XML; nothing for all others,
    // the copy of a product list that was installed among them.
    std::optional<QString> PublishedAt(const CCatalogFile& file) const;
    // The published list that an installed copy here leads to; without such a copy, the first published list;
    // null without any.
    const CCatalogFile* PublishedList() const;
    // An environment without installed products; its date is the real one.
    const boost::shared_ptr<IEnvironment>& GetEnvironment() const { return environment_; }

private:
    // Finds the files below a folder, and the folders that are not looked into.
    void ListEntries(const QString& folder);
    void RecogniseByName();
    void RecogniseListed(const CCatalogFile& list);
    void RecogniseByContents();
    void CollectReferences();
    void FindSite();
    void RecogniseReferenced();
    void CollectLinks();
    // Whether a product list is one that was installed, beside local descriptions.
    bool IsInstalledCopy(const CCatalogFile& list) const;

    QString folder_;
    std::vector<std::unique_ptr<CCatalogFile>> files_;
    QStringList unreadFolders_;
    std::vector<Reference> references_;
    std::vector<Reference> links_;
    std::optional<CSite> site_;
    boost::shared_ptr<IEnvironment> environment_;
};

// Their codes, in the order of the tables; empty when there is no readable table.
std::vector<QString> LanguageCodes(const CCatalog& catalog);
