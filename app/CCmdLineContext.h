// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the command line said.
#pragma once

#include "platform/text/CAtlString.h"

#include <vector>

// The parsed values, handed to every action. Texts are empty when their option was not given.
struct CCmdLineContext {
    // The whole command line, its parts joined by one blank each; nothing is quoted.
    CAtlString commandLine;
    // The proxy's host, and its port when one was given (ProxyAddress); used only together with
    // overrideProxy.
    CAtlString proxy;
    CAtlString userName;
    CAtlString password;
    // The details of parse errors, in the order in which they were found.
    std::vector<CAtlString> errors;
    // Accepted; nothing acts on it.
    bool verbose = false;
    // Take the proxy from here instead of the stored settings.
    bool overrideProxy = false;
};
