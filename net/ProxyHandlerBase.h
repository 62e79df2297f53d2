// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The proxy of this user: where it is, and how its credentials are obtained.
#pragma once

#include "net/IProxyDialog.h"

#include <boost/shared_ptr.hpp>

// Holds proxy host, port, user name and password. Host and port are stored in the settings that the program
// shares with the maker's board software; user name and password stay in memory. GUI thread only; the
// workflow owns it and shares it with the downloader and the main window.
class ProxyHandlerBase {
public:
    // The port when a host is stored without one.
    static constexpr int DEFAULT_PORT = 8080;

    virtual ~ProxyHandlerBase() = default;

    // Reads host (default: none) and port from the settings.
    void LoadProxySettings();
    // Writes host and port; whether the port could be written.
    bool SaveProxySettings() const;
    void SetProxyHost(const CAtlString& host) { proxyHost_ = host; }
    // Port is 1 to 65535; without a host connections are direct. Not stored before SaveProxySettings.
    void SetProxy(const CAtlString& host, int port);
    void SetCredentials(const CAtlString& userName, const CAtlString& password);
    void GetProxySettings(CAtlString& host, int& port, CAtlString& userName, CAtlString& password) const;

    // How the user is asked. Without it, as at first, nobody is.
    void SetDialog(const boost::shared_ptr<IProxyDialog>& dialog) { dialog_ = dialog; }
    // Whether the user may be asked for credentials.
    void SetInteractive(bool interactive) { interactive_ = interactive; }
    bool IsInteractive() const { return interactive_; }

    // The proxy at host and port wants credentials, and has refused those that userName and password hold.
    // The held ones are handed out once, unless it is they; after that the user is asked, when that is
    // allowed. True when userName and password hold what is to be tried. One refusal by the user ends all
    // asking until the connection options are accepted.
    bool OnProxyAuthRequired(const CAtlString& host, int port, CAtlString& userName, CAtlString& password);
    void OnProxyAuthCanceled() { cancelled_ = true; }

    // Lets the user edit host, port, user name and password; true when OK was pressed. Host and port are
    // saved when either has changed.
    bool ShowProxyOptionsDialog(QWidget* parent);

private:
    // True when the user gave credentials, which are then the held ones.
    bool AskForCredentials(const CAtlString& host, int port);
    void TakeOptions(const ProxyEntry& options);

    CAtlString proxyHost_;
    int proxyPort_ = 0;
    CAtlString userName_;
    CAtlString password_;
    bool interactive_ = false;
    bool storedCredentialsUsed_ = false;
    bool cancelled_ = false;
    boost::shared_ptr<IProxyDialog> dialog_;
};
