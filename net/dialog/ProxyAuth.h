// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The dialog for a proxy and its credentials, and the questions that it asks.
#pragma once

#include "net/ProxyHandlerBase.h"

#include <QDialog>
#include <QLineEdit>
#include <memory>

namespace Ui {
class ProxyAuth;
}

// Edits proxy host, port, user name and password (the connection options); in authentication mode host and
// port only say which proxy is asking. GUI thread only.
class ProxyAuth : public QDialog {
    Q_OBJECT

public:
    // The ports that the user may type.
    static constexpr int MIN_PORT = 1;
    static constexpr int MAX_PORT = 65534;

    explicit ProxyAuth(QWidget* parent);
    ~ProxyAuth() override;

    // What the fields show. After the dialog was accepted, host and port are those of ParseProxyAddress.
    CAtlString GetHost() const;
    // 0 when the field holds no number.
    int GetPort() const;
    CAtlString GetUserName() const;
    CAtlString GetPassword() const;
    void SetHost(const CAtlString& host);
    void SetPort(int port);
    void SetUserName(const CAtlString& userName);
    void SetPassword(const CAtlString& password);

    // Becomes the request for credentials: another title, host and port read-only and drawn as part of the
    // background, the focus on the user name.
    void SetAuthenticationMode();
    // The user may not change these, because the administrator has settled them.
    void SetFixed(bool isHostFixed, bool isPortFixed);

protected slots:
    // Splits an address in the host field ("http://proxy:3128/") into host and port. Warns about any other
    // text and about a port that is none, and then the dialog stays open.
    void accept() override;
    void reject() override { QDialog::reject(); }

private:
    // True when the fields hold a host and a port afterwards, or when the host field is empty.
    bool TakeAddress();
    // Warns that this is no proxy's address, and goes to the field that holds the mistake.
    bool Refuse(const QString& address, QLineEdit& edit);

    std::unique_ptr<Ui::ProxyAuth> form_;
};

// Opens a ProxyAuth for each question. GUI thread only.
class CProxyDialog : public IProxyDialog {
public:
    bool AskForCredentials(ProxyEntry& entry) override;
    bool EditOptions(ProxyEntry& entry, QWidget* parent) override;
};
