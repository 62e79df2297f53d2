// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The persistent settings, in the manner of a registry: a hive, a key path and named values, kept in
// QSettings files that are shared with the maker's other software.
#pragma once

#include "platform/text/CAtlString.h"

#include <QVariant>
#include <utility>
#include <vector>

// Hives: the settings of the whole machine and those of the user; where the user has no value, reads give the
// machine's. Any number but 0 counts as the user's.
inline constexpr int HKEY_LOCAL_MACHINE = 0;
inline constexpr int HKEY_CURRENT_USER = 1;

// Results of the store: done, and "there is no such value".
inline constexpr int REGISTRY_OK = 0;
inline constexpr int REGISTRY_NOT_FOUND = 2;

// The maker's settings identifier, which most operations receive and this platform ignores.
extern const CAtlString SETTINGS_DOMAIN;

// The file is that of the current settings identity (see CSettingsIdentity). The machine's file lies in the
// first entry of XDG_CONFIG_DIRS (default /etc/xdg), the user's in XDG_CONFIG_HOME (default ~/.config). The
// user's file serves in place of a machine file that cannot be written or lies below the user's folder;
// through it QSettings still reads the values in all entries of XDG_CONFIG_DIRS.
//
// Key paths are separated by "\" or "/"; separators at either end do not matter. All functions are for the
// GUI thread. A written value is in its file when the function returns, and all other lines of the file stay.
// When that cannot be done, the file stays as it was, and the functions report nothing.

// The value, or defaultValue when nothing is stored; error becomes REGISTRY_OK or REGISTRY_NOT_FOUND.
CAtlString ReadRegistryString(int hive, const CAtlString& key, const CAtlString& name,
                              const CAtlString& defaultValue, int& error,
                              const CAtlString& domain = SETTINGS_DOMAIN);
// The same for integers of 32 bits, signed or unsigned; any other stored text reads as 0.
int ReadRegistryDword(int hive, const CAtlString& key, const CAtlString& name, int defaultValue, int& error,
                      const CAtlString& domain = SETTINGS_DOMAIN);
// Both for callers that do not ask whether the value is stored.
inline CAtlString ReadRegistryString(int hive, const CAtlString& key, const CAtlString& name,
                                     const CAtlString& defaultValue = {},
                                     const CAtlString& domain = SETTINGS_DOMAIN) {
    int error = REGISTRY_OK;
    return ReadRegistryString(hive, key, name, defaultValue, error, domain);
}
inline int ReadRegistryDword(int hive, const CAtlString& key, const CAtlString& name, int defaultValue) {
    int error = REGISTRY_OK;
    return ReadRegistryDword(hive, key, name, defaultValue, error);
}

// The values of a key by name, from the organisation's file of the machine whatever the application is, and
// never from the user's. Reads the file once.
QVariantMap ReadMachineValues(const CAtlString& key);

// Always REGISTRY_OK.
int WriteRegistryString(int hive, const CAtlString& key, const CAtlString& name, const CAtlString& value,
                        const CAtlString& domain = SETTINGS_DOMAIN);
int WriteRegistryDword(int hive, const CAtlString& key, const CAtlString& name, int value,
                       const CAtlString& domain = SETTINGS_DOMAIN);

// Writes several integers of one key. A process that is killed meanwhile leaves all of them written, or none.
void WriteRegistryDwords(int hive, const CAtlString& key,
                         const std::vector<std::pair<CAtlString, int>>& values);

// Whether this user may read the machine's files in all entries of XDG_CONFIG_DIRS, as far as they are there.
bool AreMachineStoresReadable();
// Whether values of the user can be written, as far as the permissions of the file and its folder say.
bool IsUserStoreWritable();

// Appends the names of the key's sub-keys, then those of its values.
void EnumRegistryKeys(int hive, const CAtlString& key, std::vector<CAtlString>& names,
                      const CAtlString& domain = SETTINGS_DOMAIN);
