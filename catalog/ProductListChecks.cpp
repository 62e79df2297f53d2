// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/Checks.h"
#include "catalog/ElementChecks.h"
#include "catalog/FileKinds.h"
#include "catalog/FormatRules.h"
#include "catalog/ValueChecks.h"
#include "products/CProductVersions.h"
#include "products/Products.h"

#include <QRegularExpression>
#include <map>
#include <set>

namespace {

using namespace ListRules;
using Keys = std::map<QString, int>;

// The meaning of an element and of those below it, without comments and layout.
QString Meaning(const TiXmlElement& element) {
    QString meaning = '<' + QString::fromStdString(element.ValueStr());
    for (const TiXmlAttribute* attribute = element.FirstAttribute(); attribute; attribute = attribute->Next())
        meaning += QString(" %1=\"%2\"").arg(attribute->Name(), attribute->Value());
    for (const TiXmlElement* child : Children(&element))
        meaning += Meaning(*child);
    return meaning + '>';
}

// An installation accepts a new list only with a higher version.
void CheckRaised(const CCatalogFile& published, const CCatalogFile& installed, CFindings& findings) {
    const CVersionString version(XmlAttribute(*published.GetRoot(), VERSION));
    const CVersionString known(XmlAttribute(*installed.GetRoot(), VERSION));
    if (!version.IsGreater(known) && Meaning(*published.GetRoot()) != Meaning(*installed.GetRoot()))
        findings.Add(
            published.GetPath(), AttributeLine(*published.GetRoot(), VERSION), Code::NOT_RAISED,
            QString("this list differs from \"%1\", and its version %2 is not above %3: "
                    "installations with that one will never take this one")
                .arg(installed.GetPath(), version.GetString().ToQString(), known.GetString().ToQString()));
}

// Checks one list.
class CListCheck {
public:
    CListCheck(const CCatalogFile& file, const CCatalog& catalog, CFindings& findings)
        : file_(file), catalog_(catalog), findings_(findings) {}

    void Run() {
        const TiXmlElement& root = *file_.GetRoot();
        CheckRoot(root);
        for (const TiXmlElement* child : Children(&root))
            CheckProduct(*child);
        for (const TiXmlElement* child : Children(&root, PRODUCT))
            CheckNames(*child);
        if (!Products(catalog_.GetEnvironment()).Load(file_.GetFilePath()))
            Add(root.Row(), Code::EMPTY_LIST,
                "the list has no usable product or exceeds a limit: the program checks nothing");
    }

private:
    void Add(int line, const FindingCode& code, const QString& text) {
        findings_.Add(file_.GetPath(), line, code, text);
    }

    void CheckRoot(const TiXmlElement& root) {
        CheckAttributes(file_, root, LIST, findings_);
        if (XmlAttribute(root, VERSION).IsEmpty())
            Add(root.Row(), Code::INVALID_VERSION,
                "the list has no Version: an installation with it checks nothing");
        if (XmlAttribute(root, URL).IsEmpty())
            Add(root.Row(), Code::NO_REFRESH,
                "the list has no Url: installations with it will never fetch another");
    }

    void CheckProduct(const TiXmlElement& element) {
        const int errors = findings_.CountErrors(file_.GetPath());
        const auto product = CreateProduct(&element, catalog_.GetEnvironment());
        const XmlElementRule* rule = FindRule(LIST_CHILDREN, element.ValueStr());
        if (rule)
            CheckElement(file_, element, *rule, findings_);
        else
            AddUnknownElement(file_, element, LIST_CHILDREN, Code::UNKNOWN_PRODUCT, "it is left out",
                              findings_);
        if (product)
            Remember(element, *product);
        else if (findings_.CountErrors(file_.GetPath()) == errors)
            Add(element.Row(), Code::REJECTED, "the program leaves this element out");
        if (element.ValueStr() == PRODUCT && XmlAttribute(element, DEFAULT_PAGE).IsEmpty())
            Add(element.Row(), Code::NO_PAGE,
                "without DefaultUrl, the button of an offer without a page opens none");
    }

    void Remember(const TiXmlElement& element, const IProduct& product) {
        AddOnce(keys_, product.GetKey().ToQString(), element.Row(), "the key");
        if (element.ValueStr() != NOTIFICATION) {
            installable_.insert(product.GetKey().ToQString());
            AddOnce(names_, product.GetName(), element.Row(), "the name", Code::SAME_NAME);
        } else
            AddOnce(dismissals_, AttributeText(element, NOTIFICATION_NAME), element.Row(),
                    "notifications are dismissed together whose Name is");
    }

    void AddOnce(Keys& keys, const QString& key, int line, const QString& what,
                 const FindingCode& code = Code::DUPLICATE_KEY) {
        const auto [first, isNew] = keys.try_emplace(key, line);
        if (!isNew)
            Add(line, code,
                QString("%1 \"%2\" is that of line %3 too").arg(what, key, QString::number(first->second)));
    }

    // Checks what depends on the keys of all products.
    void CheckNames(const TiXmlElement& product) {
        static const QRegularExpression odd(R"(^\.|[/\\*?[]|\.xml$)",
                                            QRegularExpression::CaseInsensitiveOption);
        const QString base = AttributeText(product, BASE_XML);
        if (base.contains(odd))
            Add(AttributeLine(product, BASE_XML), Code::BAD_VALUE,
                QString("BaseXml \"%1\" is no beginning of a name: descriptions belong to it by chance, if "
                        "at all")
                    .arg(base));
        for (const auto& [key, line] : keys_)
            if (key != base && IsDescriptionOf(base, key + ".xml"))
                Add(AttributeLine(product, BASE_XML), Code::AMBIGUOUS_NAME,
                    QString("the description \"%1.xml\" of line %2 is one of \"%3\" too")
                        .arg(key, QString::number(line), base));
        for (const TiXmlElement* disabler : Children(product.FirstChildElement(DISABLERS), DISABLER))
            CheckDisabler(*disabler, base);
    }

    void CheckDisabler(const TiXmlElement& disabler, const QString& base) {
        const QString uid = AttributeText(disabler, DISABLER_UID);
        if (uid == base)
            Add(disabler.Row(), Code::NO_EFFECT, "a product does not disable itself");
        else if (!uid.isEmpty() && !installable_.contains(uid))
            Add(AttributeLine(disabler, DISABLER_UID), Code::NO_EFFECT,
                QString("\"%1\" is the key of no product in this list: it disables nothing").arg(uid));
        CheckRange({file_.GetPath(), disabler.Row()}, XmlAttribute(disabler, DISABLER_FROM),
                   XmlAttribute(disabler, DISABLER_TO), findings_);
    }

    const CCatalogFile& file_;
    const CCatalog& catalog_;
    CFindings& findings_;
    // The keys that are not those of notifications.
    std::set<QString> installable_;
    // The lines where keys, names and names of dismissals came first.
    Keys keys_;
    Keys names_;
    Keys dismissals_;
};

}  // namespace

void CheckProductLists(const CCatalog& catalog, CFindings& findings) {
    const std::vector<const CCatalogFile*> lists = catalog.ReadableFilesOf(FileKind::PRODUCT_LIST);
    for (const CCatalogFile* list : lists) {
        CListCheck(*list, catalog, findings).Run();
        for (const CCatalogFile* other : lists)
            if (catalog.PublishedAt(*list) && !catalog.PublishedAt(*other))
                CheckRaised(*list, *other, findings);
    }
}
