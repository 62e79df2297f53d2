// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/settings/DefaultSettings.h"

const CAtlString DefaultSettings::VPU_SETTINGS_KEY(L"Software/VARDO Technologies/Product Update");
const CAtlString DefaultSettings::NOTIFICATION_KEY(VPU_SETTINGS_KEY + L"/Notifications");
const CAtlString DefaultSettings::SKIPPED_KEY(VPU_SETTINGS_KEY + L"/SkippedVersions");
const CAtlString DefaultSettings::POLICY_KEY(VPU_SETTINGS_KEY + L"/Policy");
const CAtlString DefaultSettings::CHECK_UPDATES(L"CheckUpdates");
const CAtlString DefaultSettings::INTERVAL(L"Interval");
const CAtlString DefaultSettings::LAST_CHECKED(L"LastChecked");
const CAtlString DefaultSettings::HTTP_PROXY_HOST(L"HttpProxyHost");
const CAtlString DefaultSettings::HTTP_PROXY_PORT(L"HttpProxyPort");
const CAtlString DefaultSettings::WINDOW(L"Window");
