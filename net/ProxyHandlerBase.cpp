// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/ProxyHandlerBase.h"

#include "platform/settings/CSettingsIdentity.h"
#include "platform/settings/SettingsStore.h"

namespace {

const wchar_t* const KEY = L"Software/VARDO Technologies/VARDO Board Software/ProxyInformation";
const wchar_t* const HOST_NAME = L"HttpProxyHost";
const wchar_t* const PORT_NAME = L"HttpProxyPort";

}  // namespace

void ProxyHandlerBase::LoadProxySettings() {
    const CSettingsIdentity shared("", "", "");
    int ignored = REGISTRY_OK;
    proxyHost_ = ReadRegistryString(HKEY_LOCAL_MACHINE, KEY, HOST_NAME, CAtlString(), ignored);
    proxyPort_ = ReadRegistryDword(HKEY_LOCAL_MACHINE, KEY, PORT_NAME, DEFAULT_PORT, ignored);
}

bool ProxyHandlerBase::SaveProxySettings() const {
    const CSettingsIdentity shared("", "", "");
    WriteRegistryString(HKEY_LOCAL_MACHINE, KEY, HOST_NAME, proxyHost_);
    return WriteRegistryDword(HKEY_LOCAL_MACHINE, KEY, PORT_NAME, proxyPort_) == REGISTRY_OK;
}

void ProxyHandlerBase::GetProxySettings(CAtlString& host, int& port, CAtlString& userName,
                                        CAtlString& password) const {
    host = proxyHost_;
    port = proxyPort_;
    userName = userName_;
    password = password_;
}

bool ProxyHandlerBase::OnProxyAuthRequired(const CAtlString& host, int port, CAtlString& userName,
                                           CAtlString& password) {
    if (cancelled_)
        return false;
    const bool areRefused = userName_.Compare(userName) == 0 && password_.Compare(password) == 0;
    const bool areUntried = !storedCredentialsUsed_ && !userName_.IsEmpty() && !areRefused;
    if (!areUntried && !AskForCredentials(host, port))
        return false;
    storedCredentialsUsed_ = true;
    userName = userName_;
    password = password_;
    return true;
}

bool ProxyHandlerBase::AskForCredentials(const CAtlString& host, int port) {
    if (!interactive_ || !dialog_)
        return false;
    ProxyEntry entry{host, port, userName_, password_};
    cancelled_ = !dialog_->AskForCredentials(entry);
    if (cancelled_)
        return false;
    SetCredentials(entry.userName, entry.password);
    return true;
}

bool ProxyHandlerBase::ShowProxyOptionsDialog(QWidget* parent) {
    ProxyEntry options{proxyHost_, proxyPort_, userName_, password_};
    if (!dialog_ || !dialog_->EditOptions(options, parent))
        return false;
    const bool isOtherProxy = proxyHost_.Compare(options.host) != 0 || proxyPort_ != options.port;
    cancelled_ = false;
    SetProxy(options.host, options.port);
    SetCredentials(options.userName, options.password);
    if (isOtherProxy)
        SaveProxySettings();
    return true;
}
