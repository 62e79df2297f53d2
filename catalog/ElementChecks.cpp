// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/ElementChecks.h"

#include "catalog/ValueChecks.h"

#include <algorithm>
#include <set>

namespace {

// ' (it reads "BaseXml")' for a name that differs from a known one in case only; empty otherwise.
template <typename Rule>
QString Hint(const std::string& name, std::span<const Rule> rules) {
    const QString text = QString::fromStdString(name);
    for (const Rule& rule : rules)
        if (rule.name && text.compare(QLatin1String(rule.name), Qt::CaseInsensitive) == 0)
            return QString(" (it reads \"%1\")").arg(QLatin1String(rule.name));
    return {};
}

QString Named(const TiXmlElement& element) {
    return '<' + QString::fromStdString(element.ValueStr()) + '>';
}

// The program reads an attribute up to the first byte that is not UTF-8.
void CheckEncoding(const CCatalogFile& file, const TiXmlAttribute& attribute, CFindings& findings) {
    const CAtlString read(attribute.Value());
    if (CAtlStringA(read.GetString()).Compare(attribute.Value()) != 0)
        findings.Add(file.GetPath(), attribute.Row(), Code::NOT_UTF8,
                     QString("\"%1\" is not UTF-8: the program reads no more than \"%2\"")
                         .arg(QString::fromStdString(attribute.NameTStr()), read.ToQString()));
}

void CheckAttribute(const CCatalogFile& file, const TiXmlElement& element, const TiXmlAttribute& attribute,
                    std::span<const XmlAttributeRule> rules, CFindings& findings) {
    const auto rule = std::find_if(rules.begin(), rules.end(), [&](const XmlAttributeRule& candidate) {
        return attribute.NameTStr() == candidate.name;
    });
    if (rule == rules.end()) {
        const std::string& name = attribute.NameTStr();
        findings.Add(file.GetPath(), attribute.Row(), Code::UNKNOWN_ATTRIBUTE,
                     QString("the program does not read \"%1\" of %2%3")
                         .arg(QString::fromStdString(name), Named(element), Hint(name, rules)));
        return;
    }
    CheckEncoding(file, attribute, findings);
    CheckValue({file.GetPath(), attribute.Row()}, *rule, XmlAttribute(element, rule->name), findings);
}

}  // namespace

int AttributeLine(const TiXmlElement& element, const char* name) {
    for (const TiXmlAttribute* attribute = element.FirstAttribute(); attribute; attribute = attribute->Next())
        if (attribute->NameTStr() == name)
            return attribute->Row();
    return element.Row();
}

QString AttributeText(const TiXmlElement& element, const char* name) {
    return XmlAttribute(element, name).ToQString();
}

const XmlElementRule* FindRule(std::span<const XmlElementRule> rules, const std::string& name) {
    const auto rule = std::find_if(rules.begin(), rules.end(), [&](const XmlElementRule& candidate) {
        return !candidate.name || name == candidate.name;
    });
    return rule == rules.end() ? nullptr : &*rule;
}

void CheckAttributes(const CCatalogFile& file, const TiXmlElement& element, const XmlElementRule& rule,
                     CFindings& findings) {
    for (const TiXmlAttribute* attribute = element.FirstAttribute(); attribute; attribute = attribute->Next())
        CheckAttribute(file, element, *attribute, rule.attributes, findings);
    for (const XmlAttributeRule& needed : rule.attributes)
        if (needed.isNeeded && XmlAttribute(element, needed.name).IsEmpty())
            findings.Add(file.GetPath(), AttributeLine(element, needed.name), Code::MISSING_ATTRIBUTE,
                         QString("%1 lacks \"%2\", which the program needs of it")
                             .arg(Named(element), QLatin1String(needed.name)));
}

void CheckElement(const CCatalogFile& file, const TiXmlElement& element, const XmlElementRule& rule,
                  CFindings& findings) {
    CheckAttributes(file, element, rule, findings);
    std::set<std::string> seen;
    for (const TiXmlElement* child : Children(&element)) {
        const XmlElementRule* childRule = FindRule(rule.children, child->ValueStr());
        if (!childRule)
            AddUnknownElement(file, *child, rule.children, Code::UNKNOWN_ELEMENT, "it is ignored", findings);
        else if (childRule->isOnlyFirst && !seen.insert(child->ValueStr()).second)
            findings.Add(
                file.GetPath(), child->Row(), Code::REPEATED_ELEMENT,
                QString("the program reads the first %1 only, and ignores this one").arg(Named(*child)));
        else
            CheckElement(file, *child, *childRule, findings);
    }
}

void AddUnknownElement(const CCatalogFile& file, const TiXmlElement& element,
                       std::span<const XmlElementRule> rules, const FindingCode& code,
                       const char* consequence, CFindings& findings) {
    findings.Add(file.GetPath(), element.Row(), code,
                 QString("the program knows no %1 here%2: %3")
                     .arg(Named(element), Hint(element.ValueStr(), rules), QLatin1String(consequence)));
}
