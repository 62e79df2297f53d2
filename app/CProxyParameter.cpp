// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/CProxyParameter.h"

#include "net/ProxyAddress.h"

CAtlString CProxyParameter::GetError() const {
    const bool isUsed = context_.overrideProxy && !context_.proxy.IsEmpty();
    return isUsed && !ParseProxyAddress(context_.proxy) ? CAtlString(L"proxy") : CAtlString();
}
