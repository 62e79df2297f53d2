// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Addresses as they may be printed.
#pragma once

#include "platform/text/CAtlString.h"

#include <QString>

// The address without the password that it may hold (RFC 3986, 3.2.1); else as it is.
QString WithoutPassword(const CAtlString& address);
