// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// One file of the folder that is checked.
#pragma once

#include "catalog/FileKinds.h"
#include "platform/files/CVardoFilePath.h"
#include "platform/xml/XmlFile.h"

#include <QString>
#include <memory>

// Its path, its kind and, when it is one in XML, its elements.
class CCatalogFile {
public:
    // The path by which it is opened and shown. Reads nothing yet.
    explicit CCatalogFile(const QString& path) : path_(path), name_(path.section(u'/', -1)) {}

    // The path as it was given, its folder without the last "/", and its name.
    const QString& GetPath() const { return path_; }
    CVardoFilePath GetFilePath() const { return CVardoFilePath(CAtlString(path_)); }
    QString GetFolder() const { return path_.section(u'/', 0, -2); }
    const QString& GetName() const { return name_; }

    // GetRoot reads the file anew when the kind means another encoding.
    FileKind GetKind() const { return kind_; }
    void SetKind(FileKind kind);

    // The root element, which knows its row as all below it do; null when the file is no XML that the program
    // could read as a file of this kind. Reads the file when it has to. Valid until the kind changes.
    const TiXmlElement* GetRoot() const;
    // Why there is no root.
    const XmlFault& GetFault() const;

private:
    void Load() const;

    QString path_;
    QString name_;
    FileKind kind_ = FileKind::UNKNOWN;
    mutable XmlFault fault_;
    mutable std::unique_ptr<TiXmlDocument> document_;
};
