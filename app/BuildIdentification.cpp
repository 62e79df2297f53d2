// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What a binary says of itself to whoever looks into it (strings, nm); no code of the program reads it.

extern const char APP_VERSION[];
extern const char BUILD_ID_NUM[];
extern const char BUILD_ID[];

const char APP_VERSION[] = "3.1";
const char BUILD_ID_NUM[] = "3.1.555.0";
const char BUILD_ID[] = "[:VARDO Technologies 3.1.555.0:]";
