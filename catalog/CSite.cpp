// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/CSite.h"

#include <QDir>

namespace {

constexpr int HTTP_PORT = 80;

}  // namespace

CSite::CSite(const QString& address, const QString& folder)
    : address_(address.endsWith(u'/') ? address : address + u'/'), folder_(folder) {}

std::optional<QString> CSite::FileOf(const QString& address) const {
    const QUrl url(address);
    const bool isSameHost = url.isValid() && url.scheme() == address_.scheme() &&
                            url.host() == address_.host() && url.port(HTTP_PORT) == address_.port(HTTP_PORT);
    if (!isSameHost || !url.path().startsWith(address_.path()))
        return std::nullopt;
    const QString relative = QDir::cleanPath(url.path().mid(address_.path().size()));
    if (relative.startsWith(u'/') || relative == u".." || relative.startsWith(QLatin1String("../")))
        return std::nullopt;
    // A web server finds no file by a path with a "/" behind it.
    const bool isFolder = !relative.isEmpty() && url.path().endsWith(u'/');
    return folder_ + u'/' + relative + (isFolder ? "/" : "");
}

std::optional<QString> CSite::AddressOf(const QString& path) const {
    const QString beginning = folder_ + u'/';
    if (!path.startsWith(beginning))
        return std::nullopt;
    QUrl address(address_);
    address.setPath(address_.path() + path.mid(beginning.size()), QUrl::DecodedMode);
    return address.toString(QUrl::FullyEncoded);
}
