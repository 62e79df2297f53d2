// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The challenges of a proxy that wants credentials, and the answer to one of them.
#pragma once

#include <QByteArray>
#include <QCryptographicHash>
#include <QHash>
#include <QList>
#include <optional>

// A challenge (RFC 9110, 11.3).
struct ProxyChallenge {
    // In lower case, as the names of the parameters.
    QByteArray scheme;
    QHash<QByteArray, QByteArray> parameters;
    // What follows the scheme up to a comma: the whole challenge of NTLM, in Base64.
    QByteArray token;
};

// Reads the values of the fields "Proxy-Authenticate", with line feeds between. Takes linear time.
QList<ProxyChallenge> ParseChallenges(const QByteArray& fields);

// A challenge of the scheme Digest (RFC 7616). Its answers do not tell the password.
class CDigestChallenge {
public:
    // Nothing for another scheme, for other algorithms than MD5 and SHA-256, and when the proxy insists on
    // guarding bodies.
    static std::optional<CDigestChallenge> From(const ProxyChallenge& challenge);

    // The proxy takes the credentials, but wants its new nonce used.
    bool IsStale() const { return isStale_; }
    // The next value of the field "Proxy-Authorization" for a GET of that target. User name and password are
    // in UTF-8.
    QByteArray Answer(const QByteArray& user, const QByteArray& password, const QByteArray& target);

private:
    QCryptographicHash::Algorithm algorithm_ = QCryptographicHash::Md5;
    QHash<QByteArray, QByteArray> parameters_;
    bool isStale_ = false;
    int answers_ = 0;
};
