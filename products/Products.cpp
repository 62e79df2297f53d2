// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/Products.h"

#include "platform/xml/XmlFile.h"
#include "products/ListFormat.h"
#include "products/ProductFactory.h"

#include <algorithm>

namespace {

bool HasAtMost(std::ptrdiff_t count, const TiXmlElement* parent, const char* name = nullptr) {
    return std::ssize(Children(parent, name)) <= count;
}

}  // namespace

const CAtlString Products::FILE_NAME(L"products.xml");

bool Products::IsBounded(const TiXmlElement& root) {
    const auto children = Children(&root);
    return HasAtMost(MAX_PRODUCTS, &root) && HasAtMost(MAX_NOTIFICATIONS, &root, ListFormat::NOTIFICATION) &&
           std::all_of(children.begin(), children.end(), [](const TiXmlElement* child) {
               return HasAtMost(MAX_DISABLERS, child->FirstChildElement(ListFormat::DISABLERS),
                                ListFormat::DISABLER);
           });
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
    for (const TiXmlElement* child : Children(root))
        if (const auto product = CreateProduct(child, environment_))
            products_.push_back(product);
    loaded_ = !products_.empty();
    return loaded_;
}
