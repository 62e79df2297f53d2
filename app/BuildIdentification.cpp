// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Identifies the binary to tools such as strings and nm; the program itself never reads it. The numbers come
// from CMakeLists.txt.

extern const char APP_VERSION[];
extern const char BUILD_ID_NUM[];
extern const char BUILD_ID[];

const char APP_VERSION[] = VARDO_RELEASE;
const char BUILD_ID_NUM[] = VARDO_VERSION;
const char BUILD_ID[] = "[:VARDO Technologies " VARDO_VERSION ":]";
