// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Logging in at a proxy by NTLM. Microsoft publishes its messages as [MS-NLMP].
#pragma once

#include "net/ProxyChallenges.h"

#include <QDateTime>
#include <QString>

// A challenge of the scheme NTLM ([MS-NLMP], 2.2.1.2). The proxy gives it when it is asked to, and takes its
// answer only over the same connection, which is then logged in. Any thread.
class CNtlmChallenge {
public:
    // The value of the field "Proxy-Authorization" that asks for a challenge ([MS-NLMP], 2.2.1.1).
    static QByteArray Request();
    // Nothing for another scheme, and when the challenge is not there, is broken, or wants texts in another
    // encoding than UTF-16.
    static std::optional<CNtlmChallenge> From(const ProxyChallenge& challenge);

    // The value that answers the challenge by NTLMv2 ([MS-NLMP], 3.3.2), which does not tell the password.
    // The domain is that of a user "DOMAIN\name", none for "name@domain", or else the challenge's. Nobody may
    // foresee the nonce; now counts unless the challenge brings the proxy's time.
    QByteArray Answer(const QString& user, const QString& password, quint64 nonce,
                      const QDateTime& now) const;

private:
    explicit CNtlmChallenge(const QByteArray& message) : message_(message) {}

    QByteArray message_;
};
