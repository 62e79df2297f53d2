// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The result codes of transfers and of resource operations.
#pragma once

// 32 bits in the manner of COM: 0 is success, a set top bit is a failure.
inline constexpr int RESULT_OK = 0;
// A transfer failed: not an http address, a status above 200, an empty body, a silent server.
inline constexpr int RESULT_FAILED = static_cast<int>(0x80004005U);
// The credentials that a proxy wanted were declined.
inline constexpr int RESULT_ABORTED = static_cast<int>(0x80004004U);
// There is no such strings file.
inline constexpr int RESULT_INVALID_ARGUMENT = static_cast<int>(0x80070057U);
