// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "publish/CPreview.h"

#include "catalog/Checks.h"
#include "catalog/OfferBorders.h"
#include "platform/text/PrintableText.h"
#include "products/CExplanation.h"
#include "products/CFetchedFile.h"
#include "products/DescriptionFormat.h"
#include "products/Notification.h"
#include "products/Products.h"
#include "signing/CCatalogueSeal.h"
#include "signing/CMinisignSignature.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <boost/pointer_cast.hpp>

namespace {

QString Text(const CVersionString& version) {
    return version.GetString().ToQString();
}

// Takes bytes that the seal does not refuse.
QString SignatureOf(const CAtlStringA& bytes, const CVardoDirectoryPath& folder) {
    if (CCatalogueSeal(folder).IsRequired())
        return "signed";
    const std::string_view all(bytes.begin(), bytes.end());
    return CCatalogueSeal::WithoutSignature(all).size() == all.size()
               ? QString("not signed")
               : QString("signed, with no key here to verify it");
}

// Empty for one without an upper end, which disables nothing.
QString DisablerText(const CProductVersions::Disabler& disabler) {
    const CVersionStringRange range(disabler.from, disabler.to);
    if (!range.GetTo().IsValid())
        return {};
    const QString from = range.GetFrom().IsValid() ? Text(range.GetFrom()) + " to" : QString("up to");
    return QString("%1 %2 %3").arg(disabler.uid.ToQString(), from, Text(range.GetTo()));
}

}  // namespace

QString CPreview::OwnKey() {
    return QString::fromWCharArray(DescriptionFormat::OWN_FILE).section(u'.', 0, 0);
}

CPreview::CPreview(const CCatalog& catalog, const Versions& versions)
    : catalog_(catalog), versions_(versions) {
    for (const CCatalogFile* file : catalog.FilesOf(FileKind::LOCAL_DESCRIPTION))
        locals_.emplace(file->GetName(), file);
    const auto lists = catalog.FilesOf(FileKind::PRODUCT_LIST);
    const CCatalogFile* list = catalog.PublishedList();
    if (!list && !lists.empty())
        list = lists.front();
    Products products(catalog.GetEnvironment());
    if (list)
        products.Load(list->GetFilePath());
    for (const auto& product : products.GetProducts())
        if (!boost::dynamic_pointer_cast<Notification>(product))
            keys_.insert(product->GetKey());
    for (const auto& product : products.GetProducts())
        if (const auto versioned = boost::dynamic_pointer_cast<CProductVersions>(product))
            AddProduct(*versioned);
    AddOwn();
}

void CPreview::AddProduct(const CProductVersions& product) {
    const QString base = product.GetKey().ToQString();
    if (!IsWanted(base))
        return;
    Block block{.name = product.GetName(), .key = base};
    for (const auto& disabler : product.GetDisablers())
        if (const QString text = DisablerText(disabler);
            !text.isEmpty() && disabler.uid != product.GetKey() && keys_.contains(disabler.uid))
            block.disablers << text;
    std::set<QString> seen;
    for (auto local = locals_.lower_bound(base); local != locals_.end() && local->first.startsWith(base);
         ++local) {
        CProductVersion reader(local->second->GetFilePath());
        if (CProductVersions::IsDescriptionFile(product.GetKey(), local->second->GetFilePath()) &&
            reader.LoadLocal() && seen.insert(reader.GetRemoteAddress().ToQString()).second)
            AddBlock(block, *local->second, &product);
    }
    if (!seen.empty())
        return;
    block.nobody = "no local description here tells what its installations fetch";
    blocks_.push_back(block);
}

void CPreview::AddOwn() {
    const auto local = locals_.find(QString::fromWCharArray(DescriptionFormat::OWN_FILE));
    if (local != locals_.end() && IsWanted(OwnKey()))
        AddBlock({.name = "VARDO Product Update", .key = OwnKey()}, *local->second, nullptr);
}

void CPreview::AddBlock(Block block, const CCatalogFile& local, const CProductVersions* product) {
    CProductVersion reader(local.GetFilePath());
    reader.LoadLocal();
    const QString address = reader.GetRemoteAddress().ToQString();
    const auto path = catalog_.FileOf(address);
    const CCatalogFile* remote = path ? catalog_.Find(*path) : nullptr;
    block.description = path.value_or(address);
    const CVardoDirectoryPath folder{CAtlString(local.GetFolder())};
    const CAtlStringA bytes = remote ? ReadFileBytes(remote->GetFilePath()) : CAtlStringA();
    const Verdict verdict = CFetchedFile::Judge(bytes, reader.GetRemoteAddress(), folder, TodayInUtc());
    if (!product && reader.IsNoUpdates())
        block.nobody = "NoUpdates is set";
    else if (!path)
        block.nobody = "the address was not followed: it does not belong to the site of this folder";
    else if (!remote)
        block.nobody = "there is no such file";
    else if (!reader.ParseRemote(bytes))
        block.nobody = "the program rejects the file";
    else
        AddRows(block, reader, product, local, *remote);
    if (block.nobody.isEmpty() && verdict != Verdict::COUNTS)
        block.refusal = VerdictText(verdict);
    if (block.nobody.isEmpty())
        block.signature =
            block.refusal.isEmpty() ? SignatureOf(bytes, folder) : "refused as it is now: " + block.refusal;
    blocks_.push_back(std::move(block));
}

void CPreview::AddRows(Block& block, CProductVersion& reader, const CProductVersions* product,
                       const CCatalogFile& local, const CCatalogFile& remote) const {
    block.rows = RowsOf(reader, Only(block.key));
    if (std::none_of(block.rows.begin(), block.rows.end(),
                     [](const Row& row) { return !row.offer.isEmpty(); }))
        block.nobody = "no offer is above the version";
    for (Row& row : block.rows) {
        if (row.offer.isEmpty())
            continue;
        reader.SetCurrentVersion(row.from.value_or(CVersionString(L"0.0.0.0")));
        if (product) {
            row.page = product->PageOf(reader.GetTable().ChooseOffer()).ToQString();
            continue;
        }
        CFindings findings;
        CheckInstaller(catalog_, reader, local, remote, findings);
        for (const Finding& finding : findings.Sorted())
            row.refusal = row.refusal.isEmpty() ? finding.text : row.refusal + "; " + finding.text;
    }
}

std::vector<CPreview::Row> CPreview::RowsOf(CProductVersion& reader,
                                            const std::optional<CVersionString>& only) {
    const auto offered = [&](const CVersionString& installed) {
        reader.SetCurrentVersion(installed);
        return reader.IsUpdateAvailable() ? &reader.GetTable().ChooseOffer() : nullptr;
    };
    const auto makeRow = [](const std::optional<CVersionString>& from, const CUpdateEntry* offer) {
        return Row{.from = from, .offer = offer ? Text(offer->version) : QString()};
    };
    if (only) {
        Row row = makeRow(only, offered(*only));
        row.to = only;
        return {row};
    }
    // The last version of each range, by the version after it.
    std::map<CVersionString, CVersionString, ByVersion> lasts;
    for (const auto& [range, offer] : reader.GetTable().GetRangedOffers())
        lasts.emplace(VersionAfter(range.GetTo()), range.GetTo());
    const CUpdateEntry* previous = offered(CVersionString(L"0.0.0.0"));
    std::vector<Row> rows{makeRow(std::nullopt, previous)};
    for (const CVersionString& border : OfferBorders(reader.GetTable())) {
        const CUpdateEntry* offer = offered(border);
        if (offer == previous)
            continue;
        if (const auto last = lasts.find(border); last != lasts.end())
            rows.back().to = last->second;
        else
            rows.back().below = border;
        rows.push_back(makeRow(border, offer));
        previous = offer;
    }
    return rows;
}

std::optional<CVersionString> CPreview::Only(const QString& key) const {
    const auto found = versions_.find(key);
    return found == versions_.end() ? std::nullopt : std::optional(CVersionString(CAtlString(found->second)));
}

QString CPreview::GetUnknownKey() const {
    for (const auto& [key, version] : versions_)
        if (std::none_of(blocks_.begin(), blocks_.end(),
                         [&key = key](const Block& block) { return block.key == key; }))
            return key;
    return {};
}

QString CPreview::RangeText(const Row& row) {
    if (row.from && row.to)
        return row.from->IsEqual(*row.to) ? Text(*row.to) : Text(*row.from) + " to " + Text(*row.to);
    const QString end = row.to      ? QString("up to ") + Text(*row.to)
                        : row.below ? QString("below ") + Text(*row.below)
                                    : QString();
    if (!row.from)
        return end.isEmpty() ? QString("all") : end;
    return Text(*row.from) + (end.isEmpty() ? QString(" and above") : QString(", ") + end);
}

QByteArray CPreview::ToText() const {
    constexpr int RANGE_WIDTH = 34;
    constexpr int OFFER_WIDTH = 16;
    QString text;
    for (const Block& block : blocks_) {
        text += QString("%1 (%2)").arg(Printable(block.name), Printable(block.key));
        for (const QString& part : {block.description, block.signature})
            text += part.isEmpty() ? QString() : QString(", ") + Printable(part);
        text += u'\n';
        if (!block.nobody.isEmpty())
            text += QString("    nobody: %1\n").arg(block.nobody);
        const bool isAccepted = block.key == OwnKey() && block.refusal.isEmpty();
        for (const Row& row : block.rows) {
            const QString outcome = !row.refusal.isEmpty()               ? QString("refused: ") + row.refusal
                                    : isAccepted && !row.offer.isEmpty() ? QString("accepted")
                                                                         : row.page;
            const QString offer = row.offer.isEmpty() ? QString("-") : row.offer;
            text += (QString("    ") + RangeText(row).leftJustified(RANGE_WIDTH) + "  " +
                     offer.leftJustified(OFFER_WIDTH) + "  " + Printable(outcome))
                        .trimmed()
                        .prepend("    ") +
                    u'\n';
        }
        for (const QString& disabler : block.disablers)
            text += QString("    nobody beside %1\n").arg(Printable(disabler));
    }
    return text.toUtf8();
}

QJsonObject CPreview::ToJson(const Row& row, const QString& refusal) {
    const auto value = [](const std::optional<CVersionString>& version) {
        return version ? QJsonValue(Text(*version)) : QJsonValue();
    };
    return {{"from", value(row.from)},
            {"to", value(row.to)},
            {"below", value(row.below)},
            {"offer", row.offer},
            {"page", row.page},
            {"refusal", row.refusal.isEmpty() && !row.offer.isEmpty() ? refusal : row.refusal}};
}

QByteArray CPreview::ToJson() const {
    QJsonArray blocks;
    for (const Block& block : blocks_) {
        QJsonArray rows;
        for (const Row& row : block.rows)
            rows.append(ToJson(row, block.refusal));
        blocks.append(QJsonObject{{"name", block.name},
                                  {"key", block.key},
                                  {"description", block.description},
                                  {"signature", block.signature},
                                  {"nobody", block.nobody},
                                  {"disabledBeside", QJsonArray::fromStringList(block.disablers)},
                                  {"versions", rows}});
    }
    return PrintableJson(QJsonDocument(blocks));
}
