// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Where temporary files lie, out of the reach of the machine's other users.
#pragma once

#include "platform/files/CVardoDirectoryPath.h"

#include <chrono>

// A folder is safe when it belongs to the user that runs the process, is no symbolic link, can be written by
// nobody else, and lies where nobody else but root can rename or remove it: in a folder of that user or
// root's which only they can write, or which is sticky (inode(7)). So what was found safe stays so. Any
// thread.
class CTemporaryFolder {
public:
    // What the names of all files and folders begin with that only this program makes: the maker's other
    // programs use the shared folder, too, and names such as "NBKTemp.xml" in it.
    static constexpr const wchar_t* OWN_NAME = L"VARDOProductUpdate-";

    // The name of the user that runs the process; the number of one that the user database does not know.
    static CAtlString UserName();
    // "/tmp/" and the name of the user; where that is not safe, "VARDOProductUpdate" in the user's cache
    // folder.
    static const CTemporaryFolder& OfProcess();

    // Whether a folder is safe.
    static bool IsSafe(const CVardoDirectoryPath& folder);

    // Two folders of the user: one that the maker's programs share, and one of this program's own.
    CTemporaryFolder(const CVardoDirectoryPath& shared, const CVardoDirectoryPath& own)
        : shared_(shared), own_(own) {}

    // The shared folder when it is safe, else the own one. Each is made (mode 0700) when it is missing. Empty
    // when neither can be had.
    CVardoDirectoryPath Get() const;
    // Removes what is older than age and was left by earlier processes of this program, and nothing else:
    // files and folders with OWN_NAME in both folders, and in the own one the files whose names begin with
    // beginning (see ::RemoveStaleFiles). A folder that is not safe is not even opened.
    void RemoveStaleFiles(const CAtlString& beginning, std::chrono::seconds age) const;

private:
    CVardoDirectoryPath shared_;
    CVardoDirectoryPath own_;
};
