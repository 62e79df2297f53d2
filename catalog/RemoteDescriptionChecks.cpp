// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/Checks.h"
#include "catalog/ElementChecks.h"
#include "catalog/FormatRules.h"
#include "catalog/ValueChecks.h"
#include "products/CProductVersion.h"

#include <algorithm>

namespace {

using namespace DescriptionRules;

// A range in the table, and its element.
struct StoredRange {
    const TiXmlElement* element;
    CVersionStringRange ends;
};

QString Named(const CVersionStringRange& ends) {
    return QString("%1 to %2")
        .arg(ends.GetFrom().GetString().ToQString(), ends.GetTo().GetString().ToQString());
}

// Checks the offers of a product element; those in its ranges have the same element name.
class COfferCheck {
public:
    COfferCheck(const CCatalogFile& file, const char* name, CFindings& findings)
        : file_(file), name_(name), findings_(findings) {}

    void Run(const TiXmlElement& product) {
        CheckOffer(product);
        for (const TiXmlElement* range : Children(product.FirstChildElement(COMPATIBILITY), RANGE))
            CheckRangedOffer(*range);
        for (const StoredRange& stored : stored_)
            CheckReach(stored);
    }

private:
    void Add(const TiXmlElement& element, const FindingCode& code, const QString& text) {
        findings_.Add(file_.GetPath(), element.Row(), code, text);
    }

    void CheckOffer(const TiXmlElement& offer) {
        if (XmlAttribute(offer, UPDATE_VERSION).IsEmpty())
            Add(offer, Code::INVALID_VERSION, "the offer has no UpdateVersion: it is an update for nobody");
    }

    void CheckRangedOffer(const TiXmlElement& range) {
        const CAtlString from = XmlAttribute(range, VERSION_FROM);
        const CAtlString to = XmlAttribute(range, VERSION_TO);
        CheckRange({file_.GetPath(), range.Row()}, from, to, findings_);
        const TiXmlElement* offer = range.FirstChildElement(name_);
        if (!offer)
            return Add(range, Code::RANGE_WITHOUT_OFFER,
                       QString("the range holds no <%1>: the program skips it").arg(QLatin1String(name_)));
        CheckOffer(*offer);
        const CVersionStringRange ends{CVersionString(from), CVersionString(to)};
        CUpdateEntry entry;
        entry.version.SetString(XmlAttribute(*offer, UPDATE_VERSION));
        if (!table_.AddRangedOffer(ends, entry))
            return Add(range, Code::SAME_LOWER_END,
                       "an earlier range has the same lower end: the program ignores this one");
        if (!ends.GetTo().IsValid())
            return;
        stored_.push_back({&range, ends});
        if (entry.version.IsValid() && !ends.GetFrom().IsLess(entry.version))
            Add(*offer, Code::NEVER_AN_UPDATE,
                QString("the offer is not above any version from %1: it is an update for nobody")
                    .arg(Named(ends)));
    }

    // Ranges with smaller lower ends win: one that holds the upper end of this range holds all of it.
    void CheckReach(const StoredRange& range) {
        const CVersionStringRange& atUpperEnd = RangeFor(range.ends.GetTo());
        const CVersionStringRange& atLowerEnd = RangeFor(range.ends.GetFrom());
        if (!atUpperEnd.IsEqual(range.ends))
            Add(*range.element, Code::UNREACHABLE_OFFER,
                QString("the offer reaches nobody: the range of line %1 has all from %2")
                    .arg(LineOf(atUpperEnd))
                    .arg(Named(range.ends)));
        else if (!atLowerEnd.IsEqual(range.ends))
            Add(*range.element, Code::OVERLAP,
                QString("where this range overlaps with that of line %1, the offer of that one counts")
                    .arg(LineOf(atLowerEnd)));
    }

    // The range whose offer counts for that version, which some range must hold.
    const CVersionStringRange& RangeFor(const CVersionString& installed) {
        table_.SetCurrentVersion(installed);
        return *table_.ChooseRange();
    }

    int LineOf(const CVersionStringRange& ends) const {
        const auto range = std::find_if(stored_.begin(), stored_.end(),
                                        [&](const StoredRange& each) { return each.ends.IsEqual(ends); });
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
                     "Location is not \"Server\", exactly so: the program rejects the file");
    if (!root.FirstChildElement(PRODUCT))
        findings.Add(file.GetPath(), root.Row(), Code::MISSING_ELEMENT,
                     "there is no <Product> in the root: the program rejects the file");
    for (const char* name : {PRODUCT, TEST_PRODUCT})
        if (const TiXmlElement* product = root.FirstChildElement(name))
            COfferCheck(file, name, findings).Run(*product);
    CProductVersion reader(file.GetFilePath());
    if (!reader.ParseRemote(ReadFileBytes(file.GetFilePath())) && findings.CountErrors(file.GetPath()) == 0)
        findings.Add(file.GetPath(), root.Row(), Code::REJECTED, "the program rejects the file");
}

}  // namespace

void CheckRemoteDescriptions(const CCatalog& catalog, CFindings& findings) {
    for (const CCatalogFile* file : catalog.ReadableFilesOf(FileKind::REMOTE_DESCRIPTION))
        CheckRemote(*file, findings);
}
