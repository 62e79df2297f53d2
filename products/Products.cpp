// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/Products.h"

#include "platform/xml/XmlFile.h"
#include "products/ListFormat.h"
#include "products/ProductFactory.h"

const CAtlString Products::FILE_NAME(L"products.xml");

bool Products::Load(const CVardoFilePath& path) {
    path_ = path;
    version_.SetString(CAtlString());
    address_.Empty();
    products_.clear();

    TiXmlDocument document;
    if (!path.Exists() || !LoadXml(path, document))
        return false;
    const TiXmlElement* root = document.RootElement();
    version_.SetString(XmlAttribute(*root, ListFormat::VERSION));
    address_ = XmlAttribute(*root, ListFormat::URL);
    for (const TiXmlElement* child = root->FirstChildElement(); child; child = child->NextSiblingElement())
        if (const auto product = CreateProduct(child, environment_))
            products_.push_back(product);
    loaded_ = !products_.empty();
    return loaded_;
}
