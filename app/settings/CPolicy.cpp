// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/settings/CPolicy.h"

#include "app/settings/DefaultSettings.h"
#include "platform/settings/SettingsStore.h"

#include <utility>

namespace {

std::optional<int> ToNumber(const QString& text) {
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

std::optional<bool> ToSwitch(const QString& text) {
    for (const auto& [word, isOn] : {std::pair("true", true), {"false", false}})
        if (text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0)
            return isOn;
    const std::optional<int> number = ToNumber(text);
    return number ? std::optional(*number == 1) : std::nullopt;
}

}  // namespace

CPolicy::CPolicy() {
    const QVariantMap all = ReadMachineValues(DefaultSettings::POLICY_KEY);
    QStringList known;
    const auto read = [this, &all, &known](const CAtlString& name, auto understand, auto& member) {
        if (const QVariant value = all.value(name.ToQString()); value.isValid())
            member = understand(value.toString());
        known << name.ToQString();
        if (member)
            names << name.ToQString();
        else if (all.contains(name.ToQString()))
            refusals << QString("the value of the policy \"%1\" cannot be understood").arg(name.ToQString());
    };
    read(DefaultSettings::CHECK_UPDATES, ToSwitch, checkUpdates);
    read(DefaultSettings::INTERVAL, ToNumber, interval);
    read(
        DefaultSettings::HTTP_PROXY_HOST, [](const QString& text) { return std::optional(CAtlString(text)); },
        proxyHost);
    read(DefaultSettings::HTTP_PROXY_PORT, ToNumber, proxyPort);
    read(L"NoSelfUpdate", ToSwitch, noSelfUpdate);
    for (const QString& name : all.keys())
        if (!known.contains(name))
            refusals << QString("there is no policy \"%1\"").arg(name);
}
