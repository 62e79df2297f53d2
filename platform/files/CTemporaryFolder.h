// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Where temporary files lie, out of the reach of the machine's other users.
#pragma once

#include "platform/files/CVardoDirectoryPath.h"

#include <chrono>
#include <vector>

// A folder is safe when it belongs to the user that runs the process, is no symbolic link, can be written by
// nobody else, and lies where nobody else but root can rename or remove it: in a folder of that user or
// root's which only they can write, or which is sticky (inode(7)). So what was found safe stays so. One
// thread at a time.
class CTemporaryFolder {
public:
    // What the names of all files and folders begin with that only this program makes, those of private
    // folders among them: the maker's other programs use the usual folder, too, and names such as
    // "NBKTemp.xml" in it.
    static constexpr const wchar_t* OWN_NAME = L"VARDOProductUpdate-";

    // "/tmp/" and the name of the user; private ones lie in "/tmp", or in the user's cache folder where
    // "/tmp" is not safe.
    static CTemporaryFolder& OfProcess();

    // usual is the folder to use while it is safe. The others are tried in this order when a private one is
    // needed.
    CTemporaryFolder(const CVardoDirectoryPath& usual, const std::vector<CVardoDirectoryPath>& parents)
        : usual_(usual), parents_(parents) {}
    // Removes the private folder unless it holds something that is still wanted, such as an installer.
    ~CTemporaryFolder();
    CTemporaryFolder(const CTemporaryFolder&) = delete;
    CTemporaryFolder& operator=(const CTemporaryFolder&) = delete;

    // The usual folder, created (mode 0700) when it is missing; or else a private one (mode 0700), which is
    // made once and then kept to. Empty when neither can be had.
    CVardoDirectoryPath Get();
    // Removes what is older than age and was left by earlier processes of this program, and nothing else:
    // files and folders with OWN_NAME; private folders, when they are empty then; and in private folders the
    // files whose names begin with beginning (see ::RemoveStaleFiles).
    void RemoveStaleFiles(const CAtlString& beginning, std::chrono::seconds age) const;

private:
    CVardoDirectoryPath MakePrivate() const;

    CVardoDirectoryPath usual_;
    std::vector<CVardoDirectoryPath> parents_;
    // Empty as long as none was needed.
    CVardoDirectoryPath private_;
};
