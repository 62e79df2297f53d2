// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The path of a file, in normal form, and what can be done with the file behind it.
#pragma once

#include "platform/text/CAtlString.h"
#include "platform/text/CAtlStringA.h"

#include <sys/types.h>
#include <memory>

// The normal form of a path: every "\" becomes "/", and one trailing "/" is removed.
CAtlString NormalPath(const CAtlString& path);

// A value like CAtlString: it owns only its text. Every "\" of the text becomes "/", and one trailing "/" is
// removed; "." and ".." and doubled separators stay. Calls into the file system get the path as UTF-8,
// whatever the locale. Any thread may use its own objects. Failures are results; nothing throws or prints.
class CVardoFilePath {
public:
    CVardoFilePath() = default;
    explicit CVardoFilePath(const CAtlString& path);

    const CAtlString& GetFilePathString() const { return path_; }
    // Each character narrowed to its low 8 bits: for Latin-1 consumers only, never for the file system.
    CAtlStringA GetFilePathStringA() const;
    bool IsEmpty() const { return path_.IsEmpty(); }

    // The text after the last "/".
    CAtlString GetFileName() const;
    // From the last "." of the file name to the end, the dot included; empty when the name has no dot.
    CAtlString GetExtension() const;
    // The file name up to its last ".".
    CAtlString GetFileTitle() const;

    // access(2) with F_OK; false for an empty path.
    bool Exists() const;
    // Makes the file writable, then unlinks it. True when it is gone or Exists() was false.
    bool Delete() const;
    // In bytes; -1 when it is not a regular file that can be read.
    off_t GetSize() const;
    // Puts the whole file into buffer and returns the number of bytes read; 0, and no buffer, when it is
    // empty or not a regular file that can be read.
    off_t ReadAll(std::unique_ptr<char[]>& buffer) const;

private:
    CAtlString path_;
};
