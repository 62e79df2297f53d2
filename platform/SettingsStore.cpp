// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/SettingsStore.h"

#include <QFileInfo>
#include <QSettings>
#include <QVariant>
#include <memory>

#include "platform/CSettingsIdentity.h"

// Not translated and never shown: a reverse-domain name, like every settings identifier of the maker.
const CAtlString SETTINGS_DOMAIN(L"com.vardo-technologies.settings");

namespace {

// What QSettings::isWritable answers, without the folder and the passing file that it makes to find out.
bool IsWritable(const QSettings& store) {
    const QFileInfo file(store.fileName());
    if (file.exists())
        return file.isWritable();
    QFileInfo folder(file.absolutePath());
    while (!folder.exists() && !folder.isRoot())
        folder.setFile(folder.absolutePath());
    return folder.isDir() && folder.isWritable();
}

std::unique_ptr<QSettings> OpenStore(int hive) {
    const QString organization = CSettingsIdentity::Organization();
    const QString application = CSettingsIdentity::Application();
    const auto scope = hive == HKEY_LOCAL_MACHINE ? QSettings::SystemScope : QSettings::UserScope;
    auto store = std::make_unique<QSettings>(QSettings::NativeFormat, scope, organization, application);
    if (hive == HKEY_LOCAL_MACHINE && !IsWritable(*store))
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
    return error == REGISTRY_OK ? value.toInt() : defaultValue;
}

int WriteRegistryString(int hive, const CAtlString& key, const CAtlString& name, const CAtlString& value,
                        const CAtlString& /*domain*/) {
    return WriteValue(hive, key, name, value.ToQString());
}

int WriteRegistryDword(int hive, const CAtlString& key, const CAtlString& name, int value,
                       const CAtlString& /*domain*/) {
    return WriteValue(hive, key, name, value);
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
