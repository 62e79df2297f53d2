// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The names of the program's own settings, and their defaults.
#pragma once

#include "platform/text/CAtlString.h"

struct DefaultSettings {
    // The key of the update-check settings.
    static const CAtlString VPU_SETTINGS_KEY;
    // The key below it that holds one value per dismissed notification.
    static const CAtlString NOTIFICATION_KEY;
    // The key below it that holds the version that the user skips, one value per product.
    static const CAtlString SKIPPED_KEY;
    // The key below it that holds the values of the policy (CPolicy).
    static const CAtlString POLICY_KEY;
    // 1: automatic checks are on; any other number: off.
    static const CAtlString CHECK_UPDATES;
    // Days between two automatic checks.
    static const CAtlString INTERVAL;
    // Julian day of the last check that reached at least one product.
    static const CAtlString LAST_CHECKED;
    // Size and place of the window, as QWidget::saveGeometry has them, in Base64.
    static const CAtlString WINDOW;
    // Host and port of the proxy, in the policy and in the settings that the board software shares.
    static const CAtlString HTTP_PROXY_HOST;
    static const CAtlString HTTP_PROXY_PORT;

    static constexpr int DEFAULT_INTERVAL = 30;
    // The port when a host is stored without one.
    static constexpr int DEFAULT_PROXY_PORT = 8080;
};
