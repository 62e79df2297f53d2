// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/Products.h"

#include "platform/xml/XmlFile.h"
#include "products/CProductVersions.h"
#include "products/GalleryVersion.h"
#include "products/ListFormat.h"
#include "products/Notification.h"

#include <boost/make_shared.hpp>

#include <algorithm>

namespace {

bool HasAtMost(std::ptrdiff_t count, const TiXmlElement* parent, const char* name) {
    return std::ssize(Children(parent, name)) <= count;
}

boost::shared_ptr<IProduct> MakeProduct(const CAtlString& name,
                                        const boost::shared_ptr<IEnvironment>& environment) {
    if (name.Compare(CProductVersions::ELEMENT_NAME) == 0)
        return boost::make_shared<CProductVersions>(environment);
    if (name.Compare(GalleryVersion::ELEMENT_NAME) == 0)
        return boost::make_shared<GalleryVersion>(environment);
    if (name.Compare(Notification::ELEMENT_NAME) == 0)
        return boost::make_shared<Notification>(environment);
    return nullptr;
}

}  // namespace

const CAtlString Products::FILE_NAME(L"products.xml");

bool Products::IsBounded(const TiXmlElement& root) {
    const auto children = Children(&root);
    return std::ssize(children) <= MAX_PRODUCTS &&
           HasAtMost(MAX_NOTIFICATIONS, &root, ListFormat::NOTIFICATION) &&
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
    return IsLoaded();
}

boost::shared_ptr<IProduct> CreateProduct(const TiXmlElement* element,
                                          const boost::shared_ptr<IEnvironment>& environment) {
    if (!element)
        return nullptr;
    boost::shared_ptr<IProduct> product = MakeProduct(CAtlString(element->Value()), environment);
    if (!product || !product->Init(element))
        return nullptr;
    return product;
}
