// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What a folder holds at one moment, for code that looks for many files in it.
#pragma once

#include "platform/files/CVardoDirectoryPath.h"
#include "platform/files/CVardoFilePath.h"
#include "platform/text/CAtlString.h"

#include <vector>

// Reads the folder once, in its constructor, and does not change afterwards: any thread. A search takes time
// for what it finds and the logarithm of the rest; CVardoDirectoryPath::ListFiles reads the whole folder.
class CFolderListing {
public:
    explicit CFolderListing(const CVardoDirectoryPath& folder);

    // Appends what ListFiles finds for the pattern beginning + "*" + ending, in the same order. A beginning
    // or an ending with a character that means something in a pattern goes to ListFiles itself.
    void ListFiles(const CAtlString& beginning, const CAtlString& ending,
                   std::vector<CVardoFilePath>& files) const;

    // False when the folder is there, but could not be read to its end.
    bool IsWhole() const { return isWhole_; }

private:
    struct Name {
        CAtlString text;
        // The position in the folder's order.
        std::size_t place = 0;
    };

    CVardoDirectoryPath folder_;
    bool isWhole_ = true;
    // Sorted by their texts.
    std::vector<Name> names_;
};
