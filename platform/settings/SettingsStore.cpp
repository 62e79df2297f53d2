// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/settings/SettingsStore.h"

#include <QDateTime>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <algorithm>
#include <cerrno>
#include <limits>
#include <memory>

#include <sys/stat.h>
#include <unistd.h>

#include "platform/settings/CSettingsIdentity.h"
#include "platform/settings/IniMerge.h"

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

// Values by their whole keys.
using Values = std::vector<std::pair<QString, QVariant>>;

// The destructor of QSettings writes the file, so the values outlive whatever happens to the process next.
void SetValues(std::unique_ptr<QSettings> store, const Values& values) {
    for (const auto& [key, value] : values)
        store->setValue(key, value);
}

// Whether QSettings reads the values from this file.
bool Holds(const QString& path, const Values& values) {
    const QSettings store(path, QSettings::IniFormat);
    return std::all_of(values.begin(), values.end(), [&store](const auto& value) {
        return store.contains(value.first) && store.value(value.first).toString() == value.second.toString();
    });
}

// The file's text with the values as QSettings writes them. Empty without room beside the file, and when
// QSettings would not read the values, as from a text that ends in the middle of a quotation.
QByteArray Merge(const QString& path, const QByteArray& text, const Values& values) {
    const QTemporaryDir folder(path + ".XXXXXX");
    if (!folder.isValid())
        return {};
    QFile lines(folder.filePath("lines"));
    QFile copy(folder.filePath("copy"));
    SetValues(std::make_unique<QSettings>(lines.fileName(), QSettings::IniFormat), values);
    if (!lines.open(QFile::ReadOnly) || !copy.open(QFile::WriteOnly))
        return {};
    const QByteArray merged = MergeIni(text, lines.readAll());
    copy.write(merged);
    copy.close();
    return Holds(copy.fileName(), values) ? merged : QByteArray();
}

// Puts the values into a file that is there. QSettings would write all of it anew: without comments, without
// what other software has stored as types of its own, and on a full disk cut off. Here it stays as it was
// when any step fails.
void MergeInto(const QString& path, const Values& values) {
    if (Holds(path, values))
        return;
    // QSettings locks the file in this way while it writes, which takes milliseconds.
    constexpr int LONGEST_WRITE_MS = 3000;
    QLockFile lock(path + ".lock");
    lock.setStaleLockTime(LONGEST_WRITE_MS);
    QFile old(path);
    if (!lock.tryLock(2 * LONGEST_WRITE_MS) || !old.open(QFile::ReadOnly))
        return;
    const QByteArray before = old.readAll();
    const QByteArray text = old.error() == QFile::NoError ? Merge(path, before, values) : QByteArray();
    QSaveFile file(path);
    // A failure to flush would be forgotten when the file is committed.
    if (text.isEmpty() || !file.open(QFile::WriteOnly) || file.write(text) != text.size() || !file.flush())
        return;
    // QSettings takes a file of the same size and time, in milliseconds, for the one that it has read before.
    const QDateTime later = QFileInfo(old).lastModified().addMSecs(1);
    file.setFileTime(std::max(later, QDateTime::currentDateTime()), QFile::FileModificationTime);
    // Root may run with a user's settings, as sudo(8) -E does it.
    struct stat owner {};
    [[maybe_unused]] const bool isGiven = geteuid() == 0 && fstat(old.handle(), &owner) == 0 &&
                                          fchown(file.handle(), owner.st_uid, owner.st_gid) == 0;
    file.commit();
}

void WriteValues(int hive, const Values& values) {
    auto store = OpenStore(hive);
    if (QFile::exists(store->fileName()))
        MergeInto(store->fileName(), values);
    else
        SetValues(std::move(store), values);
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
    WriteValues(hive, {{SettingsKey(key, name), value.ToQString()}});
    return REGISTRY_OK;
}

int WriteRegistryDword(int hive, const CAtlString& key, const CAtlString& name, int value,
                       const CAtlString& /*domain*/) {
    WriteValues(hive, {{SettingsKey(key, name), value}});
    return REGISTRY_OK;
}

void WriteRegistryDwords(int hive, const CAtlString& key,
                         const std::vector<std::pair<CAtlString, int>>& values) {
    Values settings;
    for (const auto& [name, value] : values)
        settings.emplace_back(SettingsKey(key, name), value);
    WriteValues(hive, settings);
}

bool AreMachineStoresReadable() {
    const QString file = '/' + CSettingsIdentity::Organization() + ".conf";
    const QString folders = qEnvironmentVariable("XDG_CONFIG_DIRS", "/etc/xdg");
    const QStringList all = folders.split(':', Qt::SkipEmptyParts);
    return std::none_of(all.begin(), all.end(), [&](const QString& folder) {
        return access(QFile::encodeName(folder + file).constData(), R_OK) != 0 && errno == EACCES;
    });
}

bool IsUserStoreWritable() {
    const auto store = OpenStore(HKEY_CURRENT_USER);
    return IsWritable(*store, ExistingFolder(*store));
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
