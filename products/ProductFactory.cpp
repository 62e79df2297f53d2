// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/ProductFactory.h"

#include "products/CProductVersions.h"
#include "products/GalleryVersion.h"
#include "products/Notification.h"

#include <tinyxml.h>
#include <boost/make_shared.hpp>

namespace {

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

boost::shared_ptr<IProduct> CreateProduct(const TiXmlElement* element,
                                          const boost::shared_ptr<IEnvironment>& environment) {
    if (!element)
        return nullptr;
    boost::shared_ptr<IProduct> product = MakeProduct(CAtlString(element->Value()), environment);
    if (!product || !product->Init(element))
        return nullptr;
    return product;
}
