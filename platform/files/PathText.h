// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The text rule that file and directory paths share.
#pragma once

#include "platform/text/CAtlString.h"

// The normal form of a path: every "\" becomes "/", and one trailing "/" is removed.
CAtlString NormalPath(const CAtlString& path);
