// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Makes a product from its element of the product list.
#pragma once

#include "platform/desktop/IEnvironment.h"
#include "products/IProduct.h"

#include <boost/shared_ptr.hpp>

// A product of the class that the element's name stands for, initialised from the element. Empty when the
// element is null or unusable, or its name stands for no class.
boost::shared_ptr<IProduct> CreateProduct(const TiXmlElement* element,
                                          const boost::shared_ptr<IEnvironment>& environment);
