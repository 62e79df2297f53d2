// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/Products.h"

#include "platform/xml/XmlFile.h"
#include "products/ListFormat.h"
#include "products/ProductFactory.h"

namespace {

int CountChildren(const TiXmlElement* element, const char* name) {
    int count = 0;
    const TiXmlElement* child = element ? element->FirstChildElement(name) : nullptr;
    for (; child; child = child->NextSiblingElement(name))
        ++count;
    return count;
}

}  // namespace

const CAtlString Products::FILE_NAME(L"products.xml");

bool Products::IsBounded(const TiXmlElement& root) {
    int count = 0;
    for (const TiXmlElement* child = root.FirstChildElement(); child; child = child->NextSiblingElement())
        if (++count > MAX_PRODUCTS || CountChildren(child->FirstChildElement(ListFormat::DISABLERS),
                                                    ListFormat::DISABLER) > MAX_DISABLERS)
            return false;
    return CountChildren(&root, ListFormat::NOTIFICATION) <= MAX_NOTIFICATIONS;
}

bool Products::Load(const CVardoFilePath& path) {
    return Load(path, ReadFileBytes(path));
}

bool Products::Load(const CVardoFilePath& path, const CAtlStringA& bytes) {
    path_ = path;
    version_.SetString(CAtlString());
    address_.Empty();
    products_.clear();

    TiXmlDocument document;
    if (!LoadXml(bytes, document))
        return false;
    const TiXmlElement* root = document.RootElement();
    if (!IsBounded(*root))
        return false;
    version_.SetString(XmlAttribute(*root, ListFormat::VERSION));
    address_ = XmlAttribute(*root, ListFormat::URL);
    for (const TiXmlElement* child = root->FirstChildElement(); child; child = child->NextSiblingElement())
        if (const auto product = CreateProduct(child, environment_))
            products_.push_back(product);
    loaded_ = !products_.empty();
    return loaded_;
}
