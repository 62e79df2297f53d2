// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// New contents for a file that is never to be seen half-written.
#pragma once

#include "platform/files/CVardoFilePath.h"

#include <string_view>

#include <sys/types.h>

// Puts a file with these contents and permission bits in destination's place in one step: whenever the
// process or the machine stops, destination is the old file or the new one, whole. The copy is written beside
// it, under its name, ".new-" and six characters; a later call removes, after an hour, the copy that an ended
// process left.
//
// False, with destination as it was, when not every byte was written, when destination may not be written
// (even where it could be replaced), or when nothing may be created beside it. A symbolic link is itself
// replaced, never followed: otherwise its maker could choose which file is written to.
bool ReplaceFile(std::string_view contents, const CVardoFilePath& destination, mode_t mode);
