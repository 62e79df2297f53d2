// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/settings/CSettingsIdentity.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {

const QString MAKER = "VARDO Technologies";

}  // namespace

CSettingsIdentity::CSettingsIdentity(const QString& organization, const QString& domain,
                                     const QString& application)
    : previousOrganization_(QCoreApplication::organizationName()),
      previousDomain_(QCoreApplication::organizationDomain()),
      previousApplication_(Application()) {
    QCoreApplication::setOrganizationName(organization);
    QCoreApplication::setOrganizationDomain(domain);
    QCoreApplication::setApplicationName(application);
}

CSettingsIdentity::~CSettingsIdentity() {
    QCoreApplication::setOrganizationName(previousOrganization_);
    QCoreApplication::setOrganizationDomain(previousDomain_);
    QCoreApplication::setApplicationName(previousApplication_);
}

QString CSettingsIdentity::Organization() {
    const QString name = QCoreApplication::organizationName();
    return name.isEmpty() || name == QLatin1String("vardotech") ? MAKER : name;
}

QString CSettingsIdentity::Application() {
    const QString name = QCoreApplication::applicationName();
    const QStringList arguments =
        QCoreApplication::instance() ? QCoreApplication::arguments() : QStringList();
    const bool unset = !arguments.isEmpty() && name == QFileInfo(arguments.constFirst()).fileName();
    return unset ? QString() : name;
}
