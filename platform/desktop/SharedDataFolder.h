// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Where the maker's software on this machine lays its descriptions.
#pragma once

#include "platform/files/CVardoDirectoryPath.h"

// The parent of the executable's folder, then "share"; empty when the executable's folder has no parent. GUI
// thread, while a QCoreApplication exists.
CVardoDirectoryPath SharedDataFolder();
