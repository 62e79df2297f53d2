// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The questions about a proxy, asked in a window.
#pragma once

#include "net/IProxyDialog.h"

// Opens a ProxyAuth for each question. GUI thread only.
class CProxyDialog : public IProxyDialog {
public:
    bool AskForCredentials(ProxyEntry& entry) override;
    bool EditOptions(ProxyEntry& entry, QWidget* parent) override;
};
