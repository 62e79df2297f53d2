// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/dialog/CProxyDialog.h"

#include "net/dialog/ProxyAuth.h"

namespace {

void Fill(ProxyAuth& dialog, const ProxyEntry& entry) {
    dialog.SetHost(entry.host);
    dialog.SetPort(entry.port);
    dialog.SetUserName(entry.userName);
    dialog.SetPassword(entry.password);
}

bool Ask(ProxyAuth& dialog) {
    dialog.show();
    return dialog.exec() == QDialog::Accepted;
}

}  // namespace

bool CProxyDialog::AskForCredentials(ProxyEntry& entry) {
    ProxyAuth dialog(nullptr);
    Fill(dialog, entry);
    dialog.SetAuthenticationMode();
    if (!Ask(dialog))
        return false;
    entry.userName = dialog.GetUserName();
    entry.password = dialog.GetPassword();
    return true;
}

bool CProxyDialog::EditOptions(ProxyEntry& entry, QWidget* parent) {
    ProxyAuth dialog(parent);
    Fill(dialog, entry);
    const bool isAccepted = Ask(dialog);
    // The dialog lives in this function, whatever becomes of its parent.
    dialog.setParent(nullptr);
    if (isAccepted)
        entry = {dialog.GetHost(), dialog.GetPort(), dialog.GetUserName(), dialog.GetPassword()};
    return isAccepted;
}
