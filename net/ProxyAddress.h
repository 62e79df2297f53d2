// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The address of a proxy as people write it.
#pragma once

#include "platform/text/CAtlString.h"

#include <optional>

struct ProxyAddress {
    // A name or an address, as it was written; an IPv6 address has no brackets here.
    CAtlString host;
    // 1 to 65535.
    std::optional<int> port = std::nullopt;
};

// Reads HOST, HOST:PORT, [IPv6], [IPv6]:PORT, and an IPv6 address without brackets, which then has no port.
// Blanks around the text do not matter, nor does "http://" before it, with or without a "/" at the end. Any
// other text gives nothing: an empty host, another scheme, a user, a path, a port that is no number from 1 to
// 65535. Nobody asks here whether there is such a host. GUI thread.
std::optional<ProxyAddress> ParseProxyAddress(const CAtlString& text);
