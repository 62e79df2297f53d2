// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A Kerberos realm with one user and one proxy.
#pragma once

#include <QTcpServer>

#include "support/ChildProcess.h"
#include "support/ScopedEnvironment.h"

// A port of loopback that nothing used a moment ago.
inline int FreePort() {
    QTcpServer unused;
    unused.listen(QHostAddress::LocalHost);
    return unused.serverPort();
}

// Serves the realm from its construction on. Meanwhile this process and those that it starts have the ticket
// of the user "someone"; the proxy on 127.0.0.1 has the keytab.
class KerberosRealm {
public:
    KerberosRealm() {
        WaitUntil([this] { return server_.Output() == "ready\n" || !server_.IsRunning(); });
        if (server_.Output().empty())
            throw std::runtime_error("no Kerberos realm: " + server_.Errors());
    }
    ~KerberosRealm() { server_.Signal(SIGKILL); }

    std::string Keytab() const { return files_.Path("keytab"); }
    // Accepts further requests, and never answers.
    void FallSilent() { server_.Signal(SIGSTOP); }

private:
    TemporaryTree files_;
    ScopedEnvironment configuration_{"KRB5_CONFIG", files_.Path("krb5.conf").c_str()};
    ScopedEnvironment ticket_{"KRB5CCNAME", files_.Path("ticket").c_str()};
    ChildProcess server_{VARDO_SOURCE_DIR "/tests/support/KerberosRealm.sh",
                         {files_.Root(), std::to_string(FreePort())}};
};
