// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The address of a proxy as people write it.
#pragma once

#include "platform/text/CAtlString.h"

#include <optional>

struct ProxyAddress {
    // A name or an address, as it was written; an IPv6 address without its brackets.
    CAtlString host;
    // 1 to 65535.
    std::optional<int> port = std::nullopt;
};

// Reads HOST, HOST:PORT, [IPv6], [IPv6]:PORT, and an IPv6 address without brackets or port. Ignores blanks
// around the text, and "http://" before it with or without "/" behind it. Any other text gives nothing: an
// empty host, another scheme, a user, a path, a port outside of 1 to 65535. Looks nothing up. GUI thread.
std::optional<ProxyAddress> ParseProxyAddress(const CAtlString& text);

// The proxy as ParseProxyAddress reads it, "HOST:PORT"; empty without a host. Any thread.
QString ProxyAddressText(const CAtlString& host, int port);

// A host from the settings without the part before its last "@": that part is a user name and often a
// password, which must show nowhere. Any thread.
CAtlString WithoutUser(const CAtlString& host);
