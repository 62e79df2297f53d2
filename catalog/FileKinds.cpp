// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/FileKinds.h"

#include "catalog/FormatRules.h"
#include "platform/xml/XmlFile.h"
#include "products/CProductVersions.h"
#include "products/Products.h"
#include "signing/CCatalogueSeal.h"
#include "signing/CInstallerSeal.h"

#include <algorithm>

namespace {

// Whether an element has any of those attributes.
bool HasAny(const TiXmlElement& element, std::span<const XmlAttributeRule> rules) {
    return std::any_of(rules.begin(), rules.end(),
                       [&](const XmlAttributeRule& rule) { return element.Attribute(rule.name); });
}

// Whether any child with that name has any of those attributes; null stands for every name.
bool HasChildWith(const TiXmlElement& parent, const char* name, std::span<const XmlAttributeRule> rules) {
    const auto children = Children(&parent, name);
    return std::any_of(children.begin(), children.end(),
                       [&](const TiXmlElement* child) { return HasAny(*child, rules); });
}

FileKind KindOfNotification(const TiXmlElement& root) {
    using namespace NotificationRules;
    const bool isMessage = root.FirstChildElement(TEXTS) || HasAny(root, MESSAGE_ATTRIBUTES);
    return isMessage ? FileKind::MESSAGE : FileKind::NOTIFICATION_DESCRIPTION;
}

bool IsList(const TiXmlElement& root) {
    using namespace ListFormat;
    static constexpr XmlAttributeRule LISTED[] = {{BASE_XML}, {NOTIFICATION_BASE}, {GUID}};
    return HasChildWith(root, nullptr, LISTED);
}

}  // namespace

bool IsXmlName(const QString& name) {
    return name.endsWith(QLatin1String(".xml"), Qt::CaseInsensitive);
}

bool IsXmlKind(FileKind kind) {
    return kind != FileKind::UNKNOWN && kind < FileKind::STRINGS;
}

FileKind KindByName(const QString& name) {
    if (name == Products::FILE_NAME.ToQString())
        return FileKind::PRODUCT_LIST;
    if (name == QString::fromWCharArray(LanguageFormat::FILE_NAME))
        return FileKind::LANGUAGE_TABLE;
    if (name == QString::fromWCharArray(GalleryFormat::PUBLISHED_FILE))
        return FileKind::PUBLISHED_CATEGORIES;
    if (name == QString::fromWCharArray(GalleryFormat::INSTALLED_FILE) + QLatin1String(".xml"))
        return FileKind::INSTALLED_CATEGORIES;
    if (name == QString::fromWCharArray(CInstallerSeal::KEY_FILE) ||
        name == QString::fromWCharArray(CCatalogueSeal::KEY_FILE))
        return FileKind::PUBLIC_KEY;
    if (name.endsWith(QString::fromWCharArray(CInstallerSeal::SIGNATURE_EXTENSION)))
        return FileKind::SIGNATURE;
    return name.endsWith(QLatin1String(".strings")) ? FileKind::STRINGS : FileKind::UNKNOWN;
}

bool IsDescriptionOf(const QString& base, const QString& name) {
    return !base.isEmpty() && name.startsWith(base) && name.endsWith(".xml") &&
           CProductVersions::IsDescriptionFile(CAtlString(base), CVardoFilePath(CAtlString(name)));
}

FileKind KindByContents(const TiXmlElement& root) {
    using namespace DescriptionRules;
    if (root.ValueStr() == NotificationFormat::NOTIFICATION)
        return KindOfNotification(root);
    if (HasChildWith(root, PRODUCT, INSTALLED))
        return FileKind::LOCAL_DESCRIPTION;
    if (XmlAttribute(root, LOCATION).Compare(LOCATION_SERVER) == 0 || HasChildWith(root, nullptr, OFFER))
        return FileKind::REMOTE_DESCRIPTION;
    if (IsList(root))
        return FileKind::PRODUCT_LIST;
    if (root.FirstChildElement(GalleryFormat::CATEGORIES))
        return FileKind::PUBLISHED_CATEGORIES;
    if (root.FirstChildElement(GalleryFormat::CATEGORY))
        return FileKind::INSTALLED_CATEGORIES;
    return FileKind::UNKNOWN;
}
