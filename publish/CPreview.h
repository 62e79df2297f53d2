// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What unpublished files would offer to installed programs.
#pragma once

#include "catalog/CCatalog.h"
#include "products/CProductVersions.h"

#include <QByteArray>
#include <QJsonObject>
#include <map>
#include <optional>
#include <vector>

// Asks the program's own readers, for each product of the list that is to be published (or, without one, of
// the installed list) and for the program itself, what each installed version is offered. Reads files alone.
// GUI thread only.
//
// Gallery content and notifications have no versions of this kind, and are left out.
class CPreview {
public:
    // By key, the installed version to ask about; an empty map asks about all versions of all products.
    using Versions = std::map<QString, QString>;

    // The key of the program itself.
    static QString OwnKey();

    CPreview(const CCatalog& catalog, const Versions& versions);

    // A key that was asked for and belongs to no product; empty when there is none.
    QString GetUnknownKey() const;
    // A block for each product and each description that its installations fetch, UTF-8.
    QByteArray ToText() const;
    // An array of objects, UTF-8; docs/checking.md has their members.
    QByteArray ToJson() const;

private:
    // What the versions of an interval get.
    struct Row {
        // The first of them; without it, all below the end.
        std::optional<CVersionString> from{};
        // The last of them, or else the first that is above them; without both, there is no end.
        std::optional<CVersionString> to{};
        std::optional<CVersionString> below{};
        // Empty: nothing.
        QString offer{};
        QString page{};
        // Of the program's own update: why it is not accepted.
        QString refusal{};
    };
    // The installations of a product that fetch one description.
    struct Block {
        QString name;
        QString key;
        // Where the description lies; empty when that is not known.
        QString description{};
        QString signature{};
        // Why no installation is offered anything; empty when one may be.
        QString nobody{};
        std::vector<Row> rows{};
        QStringList disablers{};
    };

    void AddProduct(const CProductVersions& product);
    void AddOwn();
    void AddBlock(Block block, const CCatalogFile& local, const CProductVersions* product);
    void AddRows(Block& block, CProductVersion& reader, const CProductVersions* product,
                 const CCatalogFile& local, const CCatalogFile& remote) const;
    static std::vector<Row> RowsOf(CProductVersion& reader, const std::optional<CVersionString>& only);
    std::optional<CVersionString> Only(const QString& key) const;
    bool IsWanted(const QString& key) const { return versions_.empty() || versions_.contains(key); }
    static QString RangeText(const Row& row);
    static QJsonObject ToJson(const Row& row);

    const CCatalog& catalog_;
    Versions versions_;
    // Local descriptions by their names.
    std::multimap<QString, const CCatalogFile*> locals_;
    std::vector<Block> blocks_;
};
