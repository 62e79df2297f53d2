// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What earlier runs of the program left behind.
#pragma once

#include "platform/files/CVardoDirectoryPath.h"

#include <chrono>

// Removes the files of folder whose names begin with beginning and that were last written more than age ago.
// Takes only regular files of the user that runs the process, even in another user's folder. Neither follows
// nor removes links; folder itself must not be one. What cannot be removed stays. Any thread.
void RemoveStaleFiles(const CVardoDirectoryPath& folder, const CAtlString& beginning,
                      std::chrono::seconds age);
// Removes folders in folder by the same rules, with all old files in them, of any name (see CPrivateFolder).
void RemoveStaleFolders(const CVardoDirectoryPath& folder, const CAtlString& beginning,
                        std::chrono::seconds age);
