// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What a binary says of itself to tools that look into it (strings, nm); no code of the program reads it. The
// numbers are those of CMakeLists.txt.

extern const char APP_VERSION[];
extern const char BUILD_ID_NUM[];
extern const char BUILD_ID[];

const char APP_VERSION[] = VARDO_RELEASE;
const char BUILD_ID_NUM[] = VARDO_VERSION;
const char BUILD_ID[] = "[:VARDO Technologies " VARDO_VERSION ":]";
