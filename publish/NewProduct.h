// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The files of a product that the maker begins to publish.
#pragma once

#include "publish/FolderProgram.h"

#include <QString>
#include <QStringList>
#include <iosfwd>

struct NewProduct {
    QString name{};
    // What its local descriptions are called.
    QString key{};
    // What is installed at first, and offered.
    QString version{};
    // Why the rest makes no sense; empty when it does.
    QString problem{};
};

// Takes a name, a key and a version from the beginning of arguments.
NewProduct TakeNewProduct(QStringList& arguments);

// Writes the product's local and remote description into a folder, beside those that are there already, or
// into "share" and "updates" of the site, and a product list if the folder holds none; replaces no file.
// Names on out the files, and the lines to add to an existing list. Returns why it failed, and then leaves no
// file behind; empty on success.
QString WriteNewProduct(const NewProduct& product, const FolderArguments& arguments, std::ostream& out);
