// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A place where one file is out of the reach of every other user.
#pragma once

#include "platform/files/CFileDescriptor.h"
#include "platform/files/CVardoDirectoryPath.h"
#include "platform/files/CVardoFilePath.h"

// A fresh folder below the temporary directory that only the user who runs the process can enter, and the one
// file in it. Both are removed with this object, unless they are kept. One thread at a time.
//
// The file at Keep's path is the one that was read through TakeIn's descriptor, because:
// - nobody else can rename, replace or open what lies in a folder that they cannot enter
//   (path_resolution(7));
// - nobody else can exchange the folder, whose parent only its user can write;
// - nobody else has the file open for writing from before: it was the user's own file, nobody else was ever
//   allowed to write it, and it has no other name by which it could be reached.
class CPrivateFolder {
public:
    // Makes the folder; its name is CTemporaryFolder::OWN_NAME and six random characters (mkdtemp(3)).
    CPrivateFolder();
    CPrivateFolder(const CPrivateFolder&) = delete;
    CPrivateFolder& operator=(const CPrivateFolder&) = delete;
    ~CPrivateFolder();

    // Moves a file here and opens it for reading. Not open when that fails, or when the file is not regular,
    // is not the user's own, may be written by others, or has a second name. The file is gone from its old
    // place in any case, if it can be removed. To be called once.
    CFileDescriptor TakeIn(const CVardoFilePath& file);
    // Leaves folder and file where they are, and returns the file's path.
    CVardoFilePath Keep();

private:
    CVardoDirectoryPath folder_;
    CVardoFilePath file_;
    bool isKept_ = false;
};
