// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The command-line parameter that names a proxy.
#pragma once

#include "app/CCmdLineContext.h"
#include "app/CStringParameter.h"

// Fills the proxy of a context, which must outlive it.
class CProxyParameter : public CStringParameter {
public:
    explicit CProxyParameter(CCmdLineContext& context) : CStringParameter(context.proxy), context_(context) {}

    // The parameter's name when the proxy is to be used and its text is no address of a proxy. An empty text
    // is right: it means that there is no proxy.
    CAtlString GetError() const override;

private:
    const CCmdLineContext& context_;
};
