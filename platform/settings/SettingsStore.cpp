// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/settings/SettingsStore.h"

#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <limits>
#include <memory>

#include "platform/settings/CSettingsIdentity.h"

// Not translated and never shown: a reverse-domain name, like every settings identifier of the maker.
const CAtlString SETTINGS_DOMAIN(L"com.vardo-technologies.settings");

namespace {

// The folder of a store's file, or the first one above it that exists.
QFileInfo ExistingFolder(const QSettings& store) {
    QFileInfo folder(QFileInfo(store.fileName()).absolutePath());
    while (!folder.exists() && !folder.isRoot())
        folder.setFile(folder.absolutePath());
    return folder;
}

// Whether QSettings can write its file. QSettings::isWritable would make the folder and a temporary file to
// find out. QSettings always needs the folder, because it puts a new file in the old one's place.
bool IsWritable(const QSettings& store, const QFileInfo& folder) {
    const QFileInfo file(store.fileName());
    return folder.isDir() && folder.isWritable() && (!file.exists() || file.isWritable());
}

// Some desktops put a folder of the user's own, such as ~/.config/kdedefaults, before the machine's in
// XDG_CONFIG_DIRS. What is written there is read in their sessions only.
bool IsUsersOwn(const QSettings& store, const QFileInfo& folder) {
    const QFileInfo users(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    // Only folders that exist have a canonical path.
    return store.fileName().startsWith(users.filePath() + u'/') ||
           (users.exists() &&
            (folder.canonicalFilePath() + u'/').startsWith(users.canonicalFilePath() + u'/'));
}

std::unique_ptr<QSettings> OpenStore(int hive) {
    const QString organization = CSettingsIdentity::Organization();
    const QString application = CSettingsIdentity::Application();
    const auto scope = hive == HKEY_LOCAL_MACHINE ? QSettings::SystemScope : QSettings::UserScope;
    auto store = std::make_unique<QSettings>(QSettings::NativeFormat, scope, organization, application);
    if (hive != HKEY_LOCAL_MACHINE)
        return store;
    const QFileInfo folder = ExistingFolder(*store);
    if (!IsWritable(*store, folder) || IsUsersOwn(*store, folder))
        store = std::make_unique<QSettings>(organization, application);
    return store;
}

CAtlString CleanKey(const CAtlString& key) {
    CAtlString clean(key);
    clean.Replace(L'\\', L'/');
    clean.TrimLeft(L'/');
    clean.TrimRight(L'/');
    return clean;
}

QString SettingsKey(const CAtlString& key, const CAtlString& name) {
    return (CleanKey(key) + L"/" + name).ToQString();
}

// The stored value, or an invalid variant; error says which.
QVariant ReadValue(int hive, const CAtlString& key, const CAtlString& name, int& error) {
    const auto store = OpenStore(hive);
    const QString settingsKey = SettingsKey(key, name);
    error = store->contains(settingsKey) ? REGISTRY_OK : REGISTRY_NOT_FOUND;
    return error == REGISTRY_OK ? store->value(settingsKey) : QVariant();
}

// The destructor of QSettings writes the file, so the value outlives whatever happens to the process next.
int WriteValue(int hive, const CAtlString& key, const CAtlString& name, const QVariant& value) {
    OpenStore(hive)->setValue(SettingsKey(key, name), value);
    return REGISTRY_OK;
}

}  // namespace

CAtlString ReadRegistryString(int hive, const CAtlString& key, const CAtlString& name,
                              const CAtlString& defaultValue, int& error, const CAtlString& /*domain*/) {
    const QVariant value = ReadValue(hive, key, name, error);
    return error == REGISTRY_OK ? CAtlString(value.toString()) : defaultValue;
}

int ReadRegistryDword(int hive, const CAtlString& key, const CAtlString& name, int defaultValue, int& error,
                      const CAtlString& /*domain*/) {
    const QVariant value = ReadValue(hive, key, name, error);
    if (error != REGISTRY_OK)
        return defaultValue;
    // A number of 32 bits, signed or unsigned.
    const qlonglong number = value.toLongLong();
    const bool isDword =
        number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<unsigned>::max();
    return isDword ? static_cast<int>(number) : 0;
}

QVariantMap ReadMachineValues(const CAtlString& key) {
    QSettings machine(QSettings::NativeFormat, QSettings::SystemScope, CSettingsIdentity::Organization());
    machine.beginGroup(CleanKey(key).ToQString());
    QVariantMap values;
    const QStringList names = machine.childKeys();
    for (const QString& name : names)
        values[name] = machine.value(name);
    return values;
}

int WriteRegistryString(int hive, const CAtlString& key, const CAtlString& name, const CAtlString& value,
                        const CAtlString& /*domain*/) {
    return WriteValue(hive, key, name, value.ToQString());
}

int WriteRegistryDword(int hive, const CAtlString& key, const CAtlString& name, int value,
                       const CAtlString& /*domain*/) {
    return WriteValue(hive, key, name, value);
}

void WriteRegistryDwords(int hive, const CAtlString& key,
                         const std::vector<std::pair<CAtlString, int>>& values) {
    const auto store = OpenStore(hive);
    for (const auto& [name, value] : values)
        store->setValue(SettingsKey(key, name), value);
}

void EnumRegistryKeys(int hive, const CAtlString& key, std::vector<CAtlString>& names,
                      const CAtlString& /*domain*/) {
    const auto store = OpenStore(hive);
    store->beginGroup(CleanKey(key).ToQString());
    for (const QString& group : store->childGroups())
        names.emplace_back(group);
    for (const QString& value : store->childKeys())
        names.emplace_back(value);
}
