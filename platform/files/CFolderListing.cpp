// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/files/CFolderListing.h"

#include <algorithm>
#include <cwchar>

#include "platform/files/FileSystem.h"

namespace {

bool BeginsWith(const CAtlString& text, const CAtlString& beginning) {
    return std::wcsncmp(text.GetString(), beginning.GetString(),
                        static_cast<std::size_t>(beginning.GetLength())) == 0;
}

bool IsPattern(const CAtlString& text) {
    return text.FindOneOf(L"*?[\\") >= 0;
}

}  // namespace

CFolderListing::CFolderListing(const CVardoDirectoryPath& folder) : folder_(folder) {
    std::vector<CAtlString> names;
    isWhole_ = folder_.ListNames(names);
    names_.reserve(names.size());
    for (const CAtlString& name : names)
        names_.push_back({name, names_.size()});
    std::sort(names_.begin(), names_.end(),
              [](const Name& a, const Name& b) { return a.text.Compare(b.text) < 0; });
}

void CFolderListing::ListFiles(const CAtlString& beginning, const CAtlString& ending,
                               std::vector<CVardoFilePath>& files) const {
    if (IsPattern(beginning) || IsPattern(ending))
        return folder_.ListFiles(beginning + L"*" + ending, files);
    std::vector<Name> found;
    auto name =
        std::lower_bound(names_.begin(), names_.end(), beginning,
                         [](const Name& a, const CAtlString& text) { return a.text.Compare(text) < 0; });
    for (; name != names_.end() && BeginsWith(name->text, beginning); ++name)
        if (name->text.GetLength() >= beginning.GetLength() + ending.GetLength() &&
            name->text.Right(ending.GetLength()).Compare(ending) == 0)
            found.push_back(*name);
    std::sort(found.begin(), found.end(), [](const Name& a, const Name& b) { return a.place < b.place; });
    for (const Name& each : found) {
        const CVardoFilePath file(CVardoDirectoryPath::Combine(folder_, each.text));
        if (FileSystem::IsFile(file.GetFilePathString()))
            files.push_back(file);
    }
}
