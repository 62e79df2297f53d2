// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The system calls underneath the path classes, so that every path reaches the system in the same form.
#pragma once

#include "platform/files/CFileDescriptor.h"
#include "platform/text/CAtlString.h"

#include <string>
#include <string_view>

#include <sys/types.h>

// Paths go to the system as UTF-8, whatever the locale. A text that has no complete UTF-8 form, or holds a 0
// character, names no file: cutting it short would name another one. Any thread; failures are results.
namespace FileSystem {

// The path for the system; empty when the text names no file, since no file has an empty path.
std::string SystemPath(const CAtlString& path);
// access(2) with F_OK: something is there, symbolic links followed.
bool Exists(const CAtlString& path);
// The name is in use, even if only by a dangling symbolic link, or the system does not say whether it is.
bool IsTaken(const CAtlString& path);
bool IsDirectory(const CAtlString& path);
// Something other than a folder is there, symbolic links followed. Takes one system call.
bool IsFile(const CAtlString& path);
// mkdir(2) with mode 0777 less the umask; false when the name is in use.
bool CreateDirectory(const CAtlString& path);
// unlink(2).
bool DeleteFile(const CAtlString& path);
// rmdir(2).
bool RemoveDirectory(const CAtlString& path);
// Lets the owner and the group write a file that nobody may write; true unless stat or chmod fails. Symbolic
// links are left alone: what they point to is not ours to open up.
bool MakeWritable(const CAtlString& path);
// Lets the owner read, write and execute a file, and allows nothing to others; false when chmod(2) fails.
bool MakeOwnersProgram(const CAtlString& path);
// Renames a file in its file system. False, and no change, when the name is taken or the system refuses.
bool RenameToFree(const CAtlString& from, const CAtlString& to);

// A regular file opened for reading, and its size in bytes; not open when it is missing, not readable or not
// a regular file. Never waits for a writer.
CFileDescriptor OpenForReading(const CAtlString& path, off_t& size);
// Reads until size bytes are there, the file ends or reading fails; returns the number of bytes read.
off_t ReadFully(const CFileDescriptor& file, char* buffer, off_t size);
// False when fewer bytes were written.
bool WriteFully(const CFileDescriptor& file, std::string_view bytes);

}  // namespace FileSystem
