// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/ProxyHandlerBase.h"

#include "app/settings/CPolicy.h"
#include "app/settings/DefaultSettings.h"
#include "net/ProxyAddress.h"
#include "platform/settings/CSettingsIdentity.h"
#include "platform/settings/SettingsStore.h"

namespace {

const wchar_t* const KEY = L"Software/VARDO Technologies/VARDO Board Software/ProxyInformation";

}  // namespace

void ProxyHandlerBase::LoadProxySettings() {
    const CSettingsIdentity shared("", "", "");
    const CPolicy policy;
    proxyHost_ = policy.proxyHost.value_or(
        ReadRegistryString(HKEY_LOCAL_MACHINE, KEY, DefaultSettings::HTTP_PROXY_HOST));
    const int usual = policy.proxyHost ? DEFAULT_PORT
                                       : ReadRegistryDword(HKEY_LOCAL_MACHINE, KEY,
                                                           DefaultSettings::HTTP_PROXY_PORT, DEFAULT_PORT);
    // Administrators and other programs may have stored "http://proxy:3128/".
    const auto written = ParseProxyAddress(proxyHost_).value_or(ProxyAddress{.host = proxyHost_});
    proxyHost_ = written.host;
    proxyPort_ = policy.proxyPort.value_or(written.port.value_or(usual));
}

bool ProxyHandlerBase::SaveProxySettings() const {
    const CSettingsIdentity shared("", "", "");
    const CPolicy policy;
    if (!policy.proxyHost)
        WriteRegistryString(HKEY_LOCAL_MACHINE, KEY, DefaultSettings::HTTP_PROXY_HOST, proxyHost_);
    return policy.IsProxyPortFixed() ||
           WriteRegistryDword(HKEY_LOCAL_MACHINE, KEY, DefaultSettings::HTTP_PROXY_PORT, proxyPort_) ==
               REGISTRY_OK;
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
    const CPolicy policy;
    ProxyEntry options{proxyHost_, proxyPort_, userName_, password_};
    options.isHostFixed = policy.proxyHost.has_value();
    options.isPortFixed = policy.IsProxyPortFixed();
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
