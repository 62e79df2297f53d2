// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The names of the program's own settings, and their defaults.
#pragma once

#include "platform/text/CAtlString.h"

struct DefaultSettings {
    // The key of the update-check settings.
    static inline const CAtlString VPU_SETTINGS_KEY{L"Software/VARDO Technologies/Product Update"};
    // The key below it that holds one value per dismissed notification.
    static inline const CAtlString NOTIFICATION_KEY{VPU_SETTINGS_KEY + L"/Notifications"};
    // The key below it that holds the version that the user skips, one value per product.
    static inline const CAtlString SKIPPED_KEY{VPU_SETTINGS_KEY + L"/SkippedVersions"};
    // The key below it that holds the values of the policy (CPolicy).
    static inline const CAtlString POLICY_KEY{VPU_SETTINGS_KEY + L"/Policy"};
    // 1: automatic checks are on; any other number: off.
    static inline const CAtlString CHECK_UPDATES{L"CheckUpdates"};
    // Days between two automatic checks.
    static inline const CAtlString INTERVAL{L"Interval"};
    // Julian day of the last check that reached at least one product.
    static inline const CAtlString LAST_CHECKED{L"LastChecked"};
    // Size and place of the window, as QWidget::saveGeometry has them, in Base64.
    static inline const CAtlString WINDOW{L"Window"};
    // Host and port of the proxy, in the policy and in the settings that the board software shares.
    static inline const CAtlString HTTP_PROXY_HOST{L"HttpProxyHost"};
    static inline const CAtlString HTTP_PROXY_PORT{L"HttpProxyPort"};

    static constexpr int DEFAULT_INTERVAL = 30;
    // The port when a host is stored without one.
    static constexpr int DEFAULT_PROXY_PORT = 8080;
};
