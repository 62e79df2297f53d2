// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The product list: what the file "products.xml" says.
#pragma once

#include "platform/desktop/IEnvironment.h"
#include "platform/files/CVardoFilePath.h"
#include "platform/text/CAtlString.h"
#include "platform/text/CAtlStringA.h"
#include "products/CVersionString.h"
#include "products/IProduct.h"

#include <boost/shared_ptr.hpp>

// The products of one list file, in the order of their elements, with the list's version and the address of
// the newest list. GUI thread only.
class Products {
public:
    // The name of the list file: "products.xml".
    static const CAtlString FILE_NAME;

    // A list that exceeds a limit is unreadable, because the cost of each check grows with these numbers,
    // and with the square of that of notifications, whose late rows the table lays out one by one.
    static constexpr int MAX_PRODUCTS = 5'000;
    static constexpr int MAX_DISABLERS = 100;
    static constexpr int MAX_NOTIFICATIONS = 100;
    static bool IsBounded(const TiXmlElement& root);

    explicit Products(const boost::shared_ptr<IEnvironment>& environment) : environment_(environment) {}
    virtual ~Products() = default;

    // Reads a list file in place of what is held. True when at least one product was made; a missing,
    // malformed or unbounded file gives false and an empty list.
    bool Load(const CVardoFilePath& path);
    // The same, with the file's bytes already read.
    bool Load(const CVardoFilePath& path, const CAtlStringA& bytes);

    // The path given to the last Load.
    const CVardoFilePath& GetPath() const { return path_; }
    const IProduct::List& GetProducts() const { return products_; }
    const CVersionString& GetVersion() const { return version_; }
    // Where the newest list lies; empty when it may not be refreshed.
    const CAtlString& GetAddress() const { return address_; }
    bool IsLoaded() const { return !products_.empty(); }

private:
    CVardoFilePath path_;
    IProduct::List products_;
    CVersionString version_;
    CAtlString address_;
    boost::shared_ptr<IEnvironment> environment_;
};

// A product of the class that the element's name stands for, initialised from the element. Empty when the
// element is null or unusable, or its name stands for no class.
boost::shared_ptr<IProduct> CreateProduct(const TiXmlElement* element,
                                          const boost::shared_ptr<IEnvironment>& environment);
