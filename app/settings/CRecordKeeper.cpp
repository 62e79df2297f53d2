// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/settings/CRecordKeeper.h"

#include "app/settings/DefaultSettings.h"
#include "platform/settings/SettingsStore.h"

namespace {

const CAtlString& KEY = DefaultSettings::VPU_SETTINGS_KEY;

int ReadUsersElseMachines(const CAtlString& name, int defaultValue) {
    int error = REGISTRY_OK;
    const int value = ReadRegistryDword(HKEY_CURRENT_USER, KEY, name, defaultValue, error);
    return error == REGISTRY_OK ? value : ReadRegistryDword(HKEY_LOCAL_MACHINE, KEY, name, defaultValue);
}

}  // namespace

bool CRecordKeeper::Load() {
    policy_ = CPolicy();
    interval_ = policy_.interval.value_or(
        ReadUsersElseMachines(DefaultSettings::INTERVAL, DefaultSettings::DEFAULT_INTERVAL));
    checkUpdates_ =
        policy_.checkUpdates.value_or(ReadUsersElseMachines(DefaultSettings::CHECK_UPDATES, 1) == 1);
    int error = REGISTRY_OK;
    lastChecked_ = ReadRegistryDword(HKEY_CURRENT_USER, KEY, DefaultSettings::LAST_CHECKED, 0, error);
    newLastChecked_ = lastChecked_;
    const CAtlString place = ReadRegistryString(HKEY_CURRENT_USER, KEY, DefaultSettings::WINDOW);
    windowPlace_ = QByteArray::fromBase64(place.ToQString().toLatin1());
    return error == REGISTRY_OK;
}

void CRecordKeeper::Save() const {
    std::vector<std::pair<CAtlString, int>> values{{DefaultSettings::LAST_CHECKED, newLastChecked_}};
    if (!policy_.interval)
        values.emplace_back(DefaultSettings::INTERVAL, interval_);
    if (!policy_.checkUpdates)
        values.emplace_back(DefaultSettings::CHECK_UPDATES, checkUpdates_ ? 1 : 0);
    WriteRegistryDwords(HKEY_CURRENT_USER, KEY, values);
    if (isWindowMoved_)
        WriteRegistryString(HKEY_CURRENT_USER, KEY, DefaultSettings::WINDOW,
                            CAtlString(QString::fromLatin1(windowPlace_.toBase64())));
}

bool CRecordKeeper::IsCheckDue(const QDate& today) const {
    // In 64 bits: the stored values may be anything.
    return checkUpdates_ && today.toJulianDay() - lastChecked_ >= interval_;
}
