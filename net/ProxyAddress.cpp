// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/ProxyAddress.h"

#include <QHostAddress>
#include <QRegularExpression>

namespace {

constexpr int HIGHEST_PORT = 65535;

bool IsIPv6(const QString& text) {
    return QHostAddress(text).protocol() == QAbstractSocket::IPv6Protocol;
}

// The text without blanks, "http://" and the "/" at the end.
QString HostAndPort(const QString& text) {
    const QLatin1String scheme("http://");
    QString trimmed = text.trimmed();
    if (!trimmed.startsWith(scheme, Qt::CaseInsensitive))
        return trimmed;
    const QString rest = trimmed.mid(scheme.size());
    return rest.endsWith('/') ? rest.chopped(1) : rest;
}

}  // namespace

std::optional<ProxyAddress> ParseProxyAddress(const CAtlString& text) {
    static const QRegularExpression FORM(
        R"(\A(?:\[(?<ipv6>[^\]]+)\]|(?<name>[^\s\[\]:/\\?#@]+))(?::(?<port>[0-9]{1,5}))?\z)");
    const QString written = HostAndPort(text.ToQString());
    if (IsIPv6(written))
        return ProxyAddress{.host = CAtlString(written)};

    const QRegularExpressionMatch match = FORM.match(written);
    const QString ipv6 = match.captured("ipv6");
    if (!match.hasMatch() || (!ipv6.isEmpty() && !IsIPv6(ipv6)))
        return std::nullopt;
    ProxyAddress address{.host = CAtlString(ipv6.isEmpty() ? match.captured("name") : ipv6)};
    if (!match.hasCaptured("port"))
        return address;
    address.port = match.captured("port").toInt();
    const bool isPort = *address.port >= 1 && *address.port <= HIGHEST_PORT;
    return isPort ? std::optional(address) : std::nullopt;
}

QString ProxyAddressText(const CAtlString& host, int port) {
    const QString name = host.ToQString();
    if (name.isEmpty())
        return {};
    return (IsIPv6(name) ? '[' + name + ']' : name) + ':' + QString::number(port);
}

CAtlString WithoutUser(const CAtlString& host) {
    return CAtlString(host.ToQString().section('@', -1));
}
