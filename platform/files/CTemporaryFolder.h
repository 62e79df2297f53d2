// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Where temporary files lie, out of the reach of the machine's other users.
#pragma once

#include "platform/files/CVardoDirectoryPath.h"

#include <chrono>

// A folder is safe when it belongs to the user that runs the process, is not a symbolic link and is writable
// only by that user. Its parent must belong to that user or to root, and be sticky (inode(7)) or writable
// only by its owner. So only the user and root can rename or remove the folder: it stays safe. Any thread.
class CTemporaryFolder {
public:
    // Begins the names of all files and folders that only this program makes. The maker's other programs use
    // the shared folder, too, with names such as "NBKTemp.xml".
    static constexpr const wchar_t* OWN_NAME = L"VARDOProductUpdate-";

    // OWN_NAME and the number of this process, so that no other process gives a file such a name.
    static CAtlString NamesOfProcess();
    // The name of the user that runs the process, or the number when the user database has no name.
    static CAtlString UserName();
    // "/tmp/" and the user's name; where that is unsafe, "VARDOProductUpdate" in the user's cache folder.
    static const CTemporaryFolder& OfProcess();

    // Whether a folder is safe.
    static bool IsSafe(const CVardoDirectoryPath& folder);

    // Two folders of the user: one that the maker's programs share, and one of this program's own.
    CTemporaryFolder(const CVardoDirectoryPath& shared, const CVardoDirectoryPath& own)
        : shared_(shared), own_(own) {}

    // The shared folder if it is safe, else the own one; Get makes it (mode 0700). Empty if neither is safe.
    CVardoDirectoryPath Get() const;
    // Removes what earlier processes of this program left and is older than age: files and folders with
    // OWN_NAME in both folders, and in the own one the files whose names begin with beginning (see
    // ::RemoveStaleFiles). Does not open an unsafe folder.
    void RemoveStaleFiles(const CAtlString& beginning, std::chrono::seconds age) const;

private:
    CVardoDirectoryPath shared_;
    CVardoDirectoryPath own_;
};
