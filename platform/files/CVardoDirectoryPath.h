// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The path of a directory, in normal form, and what can be done with the directory behind it.
#pragma once

#include "platform/files/CVardoFilePath.h"
#include "platform/text/CAtlString.h"

#include <boost/function.hpp>
#include <vector>

// A value with the normal form and the rules of CVardoFilePath.
class CVardoDirectoryPath {
public:
    CVardoDirectoryPath() = default;
    explicit CVardoDirectoryPath(const CAtlString& path);
    // The file's path up to its last "/".
    explicit CVardoDirectoryPath(const CVardoFilePath& file);

    const CAtlString& GetDirectoryPathString() const { return path_; }
    bool IsEmpty() const { return path_.IsEmpty(); }
    // Also true for a file of that path (FileSystem::Exists).
    bool Exists() const;

    // Adds "/" and name; an empty name changes nothing.
    void Append(const CAtlString& name);
    // The file of that name in a directory.
    static CVardoFilePath Combine(const CVardoDirectoryPath& directory, const CAtlString& fileName);
    // Cuts the path at its last "/"; false, and no change, when it has no "/".
    bool RemoveLastComponent();
    // Creates the directory and its parents (mode 0777 less the umask); true when it exists afterwards.
    bool Create() const;
    // Appends the files whose names match pattern (fnmatch(3)), in the order of readdir(3). Leaves out
    // directories, names that begin with "." or are not UTF-8, and what stat(2) fails for.
    void ListFiles(const CAtlString& pattern, std::vector<CVardoFilePath>& files) const;

    // Appends all names in the order of readdir(3), except those that begin with "." or are not UTF-8.
    // False when the folder is there, but could not be read to its end.
    bool ListNames(std::vector<CAtlString>& names) const;

    // "/tmp/" and the name of the user that runs the process, created when it is missing; where others could
    // reach into it, another one (CTemporaryFolder). Empty when neither is safe.
    static CVardoDirectoryPath GetTempDirectory();
    // A file of the temporary directory that does not exist yet: base name and extension (with its dot), or
    // base name, a random number in parentheses and extension, all without separators and control characters.
    // An empty base name becomes BASE_NAME. The file is not created. Empty when no free name was found in
    // MAX_TEMP_NAMES tries, or there is no temporary directory.
    static CVardoFilePath GetTempFilePath(const CAtlString& extension, const CAtlString& baseName);
    // Offers such names in another directory to claim, and returns the first that it takes. Empty when it
    // took none of MAX_TEMP_NAMES, or directory is empty.
    static CVardoFilePath ClaimFile(const CVardoDirectoryPath& directory, const CAtlString& extension,
                                    const CAtlString& baseName,
                                    const boost::function<bool(const CVardoFilePath&)>& claim);

    static constexpr int MAX_TEMP_NAMES = 10000;
    static constexpr const wchar_t* BASE_NAME = L"NBKTemp";

private:
    CAtlString path_;
};
