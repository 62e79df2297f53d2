// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/catalog/Checks.h"
#include "app/catalog/ElementChecks.h"
#include "app/catalog/ValueChecks.h"
#include "products/CProductVersion.h"
#include "products/DescriptionFormat.h"

#include <algorithm>

namespace {

using namespace DescriptionFormat;

// A range that is in the table, with its offer there.
struct StoredRange {
    const TiXmlElement* element;
    CVersionStringRange ends;
    const CUpdateEntry* offer;
};

QString Named(const CVersionStringRange& ends) {
    return QStringLiteral("%1 to %2")
        .arg(ends.GetFrom().GetString().ToQString(), ends.GetTo().GetString().ToQString());
}

// The check of the offers of a product element, all of which are in elements of the same name.
class COfferCheck {
public:
    COfferCheck(const CCatalogFile& file, const char* name, CFindings& findings)
        : file_(file), name_(name), findings_(findings) {}

    void Run(const TiXmlElement& product) {
        CheckOffer(product);
        CUpdateXmlReader::ReadOffers(product, name_, table_,
                                     [this](const auto& range, const auto& ends, const auto* offer,
                                            const auto* stored) { OnRange(range, ends, offer, stored); });
        for (const StoredRange& range : stored_)
            CheckReach(range);
    }

private:
    void Add(const TiXmlElement& element, const FindingCode& code, const QString& text) {
        findings_.Add(file_.GetPath(), element.Row(), code, text);
    }

    void CheckOffer(const TiXmlElement& offer) {
        if (XmlAttribute(offer, UPDATE_VERSION).IsEmpty())
            Add(offer, Code::INVALID_VERSION,
                QStringLiteral("the offer has no UpdateVersion: it is an update for nobody"));
    }

    void OnRange(const TiXmlElement& range, const CVersionStringRange& ends, const TiXmlElement* offer,
                 const CUpdateEntry* stored) {
        CheckRange({file_.GetPath(), range.Row()}, XmlAttribute(range, VERSION_FROM),
                   XmlAttribute(range, VERSION_TO), findings_);
        if (!offer)
            return Add(
                range, Code::RANGE_WITHOUT_OFFER,
                QStringLiteral("the range holds no <%1>: the program skips it").arg(QLatin1String(name_)));
        CheckOffer(*offer);
        if (!stored)
            return Add(
                range, Code::SAME_LOWER_END,
                QStringLiteral("an earlier range has the same lower end: the program ignores this one"));
        if (ends.GetTo().IsValid())
            stored_.push_back({&range, ends, stored});
        if (stored->version.IsValid() && ends.GetTo().IsValid() && !ends.GetFrom().IsLess(stored->version))
            Add(*offer, Code::NEVER_AN_UPDATE,
                QStringLiteral("the offer is not above any version from %1: it is an update for nobody")
                    .arg(Named(ends)));
    }

    // Ranges before it in the order of the lower ends win: when they hold its upper end they hold all of it.
    void CheckReach(const StoredRange& range) {
        const CUpdateEntry& atUpperEnd = OfferFor(range.ends.GetTo());
        const CUpdateEntry& atLowerEnd = OfferFor(range.ends.GetFrom());
        if (&atUpperEnd != range.offer)
            Add(*range.element, Code::UNREACHABLE_OFFER,
                QStringLiteral("the offer reaches nobody: the range of line %1 has all from %2")
                    .arg(LineOf(atUpperEnd))
                    .arg(Named(range.ends)));
        else if (&atLowerEnd != range.offer)
            Add(*range.element, Code::OVERLAP,
                QStringLiteral("where this range overlaps with that of line %1, the offer of that one counts")
                    .arg(LineOf(atLowerEnd)));
    }

    const CUpdateEntry& OfferFor(const CVersionString& installed) {
        table_.SetCurrentVersion(installed);
        return table_.ChooseOffer();
    }

    int LineOf(const CUpdateEntry& offer) const {
        const auto range = std::find_if(stored_.begin(), stored_.end(),
                                        [&](const StoredRange& each) { return each.offer == &offer; });
        return range == stored_.end() ? 0 : range->element->Row();
    }

    const CCatalogFile& file_;
    const char* name_;
    CFindings& findings_;
    CUpdateTable table_;
    std::vector<StoredRange> stored_;
};

void CheckRemote(const CCatalogFile& file, CFindings& findings) {
    const TiXmlElement& root = *file.GetRoot();
    CheckElement(file, root, REMOTE, findings);
    if (XmlAttribute(root, LOCATION).Compare(LOCATION_SERVER) != 0)
        findings.Add(file.GetPath(), AttributeLine(root, LOCATION), Code::NOT_SERVER,
                     QStringLiteral("Location is not \"Server\", exactly so: the program rejects the file"));
    if (!root.FirstChildElement(PRODUCT))
        findings.Add(file.GetPath(), root.Row(), Code::MISSING_ELEMENT,
                     QStringLiteral("there is no <Product> in the root: the program rejects the file"));
    for (const char* name : {PRODUCT, TEST_PRODUCT})
        if (const TiXmlElement* product = root.FirstChildElement(name))
            COfferCheck(file, name, findings).Run(*product);
    CProductVersion reader(file.GetFilePath());
    if (!reader.ParseRemote(ReadFileBytes(file.GetFilePath())) && findings.CountErrors(file.GetPath()) == 0)
        findings.Add(file.GetPath(), root.Row(), Code::REJECTED,
                     QStringLiteral("the program rejects the file"));
}

}  // namespace

void CheckRemoteDescriptions(const CCatalog& catalog, CFindings& findings) {
    for (const CCatalogFile* file : catalog.FilesOf(FileKind::REMOTE_DESCRIPTION))
        if (file->GetRoot())
            CheckRemote(*file, findings);
}
