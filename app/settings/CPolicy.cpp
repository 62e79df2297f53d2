// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/settings/CPolicy.h"

#include "app/settings/DefaultSettings.h"
#include "platform/settings/SettingsStore.h"

CPolicy::CPolicy() {
    const auto read = [this, all = ReadMachineValues(DefaultSettings::POLICY_KEY)](const CAtlString& name) {
        QVariant value = all.value(name.ToQString());
        if (value.isValid())
            names << name.ToQString();
        return value;
    };
    if (const QVariant value = read(DefaultSettings::CHECK_UPDATES); value.isValid())
        checkUpdates = value.toInt() == 1;
    if (const QVariant value = read(DefaultSettings::INTERVAL); value.isValid())
        interval = value.toInt();
    if (const QVariant value = read(DefaultSettings::HTTP_PROXY_HOST); value.isValid())
        proxyHost = CAtlString(value.toString());
    if (const QVariant value = read(DefaultSettings::HTTP_PROXY_PORT); value.isValid())
        proxyPort = value.toInt();
    else if (proxyHost)
        proxyPort = DefaultSettings::DEFAULT_PROXY_PORT;
    noSelfUpdate = read(L"NoSelfUpdate").toInt() == 1;
}
