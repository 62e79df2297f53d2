// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The proxy of this user: where it is, and how its credentials are obtained.
#pragma once

#include "app/settings/DefaultSettings.h"
#include "platform/text/CAtlString.h"

#include <boost/shared_ptr.hpp>

class QWidget;

// What the user sees and edits.
struct ProxyEntry {
    // Empty for a direct connection.
    CAtlString host;
    // 0 when the user gave no port.
    int port = 0;
    CAtlString userName;
    CAtlString password;
    // The administrator has settled it: the user may not change it.
    bool isHostFixed = false;
    bool isPortFixed = false;
};

// The questions to the user: a program without windows leaves them out, and a test answers them. Each
// question returns true when the user has answered it. When the user declines or closes it, it returns false
// and leaves the entry as it was. GUI thread only.
class IProxyDialog {
public:
    virtual ~IProxyDialog() = default;
    // The proxy of the entry wants credentials; the user may change only these.
    virtual bool AskForCredentials(ProxyEntry& entry) = 0;
    // The user may change all of the entry. The dialog belongs to parent while it is open.
    virtual bool EditOptions(ProxyEntry& entry, QWidget* parent) = 0;
};

// Holds proxy host, port, user name and password. Host and port are stored in the settings that the program
// shares with the maker's board software; user name and password stay in memory. GUI thread only.
class ProxyHandlerBase {
public:
    // The port when a host is stored without one.
    static constexpr int DEFAULT_PORT = DefaultSettings::DEFAULT_PROXY_PORT;

    virtual ~ProxyHandlerBase() = default;

    // Reads host (default: empty) and port (DEFAULT_PORT) from the policy, else from the settings. A host may
    // be written as ParseProxyAddress reads it.
    void LoadProxySettings();
    // Writes host and port, except what the policy sets. Always true: the store reports no failure.
    bool SaveProxySettings() const;
    void SetProxyHost(const CAtlString& host) { proxyHost_ = host; }
    // Port is 1 to 65535, or 0 when none was given; without a host connections are direct. SaveProxySettings
    // stores both.
    void SetProxy(const CAtlString& host, int port) {
        proxyHost_ = host;
        proxyPort_ = port;
    }
    void SetCredentials(const CAtlString& userName, const CAtlString& password) {
        userName_ = userName;
        password_ = password;
    }
    void GetProxySettings(CAtlString& host, int& port, CAtlString& userName, CAtlString& password) const;

    // Without a dialog, as at first, the user is not asked.
    void SetDialog(const boost::shared_ptr<IProxyDialog>& dialog) { dialog_ = dialog; }
    // Whether the user may be asked for credentials.
    void SetInteractive(bool interactive) { interactive_ = interactive; }

    // The proxy at host and port wants credentials, and has refused those that userName and password hold.
    // Hands out the stored credentials once, unless the proxy has refused them; after that asks the user,
    // when that is allowed. True when userName and password hold credentials to try. When the user declines
    // once, all asking ends until the user accepts the connection options.
    bool OnProxyAuthRequired(const CAtlString& host, int port, CAtlString& userName, CAtlString& password);
    void OnProxyAuthCanceled() { cancelled_ = true; }

    // Lets the user edit all four, and saves host and port when either changes. True after OK.
    bool ShowProxyOptionsDialog(QWidget* parent);

private:
    // Stores the credentials that the user gives; false when the user declines or may not be asked.
    bool AskForCredentials(const CAtlString& host, int port);

    CAtlString proxyHost_;
    int proxyPort_ = 0;
    CAtlString userName_;
    CAtlString password_;
    bool interactive_ = false;
    bool storedCredentialsUsed_ = false;
    bool cancelled_ = false;
    boost::shared_ptr<IProxyDialog> dialog_;
};
