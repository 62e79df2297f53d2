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
#include <set>
#include <vector>

// Asks the program's own readers what they offer to each installed version: for each product of the list that
// installations take (CCatalog::PublishedList; without one, of the first list) and for the program itself.
// Only reads files. GUI thread only.
//
// Gallery content and notifications have no such versions, and are left out.
class CPreview {
public:
    // By key, the installed version to ask about; an empty map asks about all versions of all products.
    using Versions = std::map<QString, QString>;

    // The key of the program itself.
    static QString OwnKey();

    CPreview(const CCatalog& catalog, const Versions& versions);

    // The first requested key that belongs to no product; empty when all keys are known.
    QString GetUnknownKey() const;
    // In UTF-8, a block for each product and each description that its installations fetch.
    QByteArray ToText() const;
    // In UTF-8, an array of objects; docs/checking.md has their members.
    QByteArray ToJson() const;

private:
    // The offer for the installed versions of an interval.
    struct Row {
        // The first version; without it, the interval holds all below its end.
        std::optional<CVersionString> from{};
        // The last version, or else the first one above; without both, the interval has no end.
        std::optional<CVersionString> to{};
        std::optional<CVersionString> below{};
        // The offered version; empty when nothing is offered.
        QString offer{};
        QString page{};
        // Why the program would refuse its own update, at least with the key that is here; else empty.
        QString refusal{};
    };
    // The installations of a product that fetch one description.
    struct Block {
        QString name;
        QString key;
        // The description's path in the folder, or else its address; empty when neither is known.
        QString description{};
        QString signature{};
        // Why all refuse the description as it is now; empty if they do not.
        QString refusal{};
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
    // refusal: that of the row's block.
    static QJsonObject ToJson(const Row& row, const QString& refusal);

    const CCatalog& catalog_;
    Versions versions_;
    // Of all products in the list that can be installed.
    std::set<CAtlString> keys_;
    // Local descriptions by their names.
    std::multimap<QString, const CCatalogFile*> locals_;
    std::vector<Block> blocks_;
};
