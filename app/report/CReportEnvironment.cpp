// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/report/CReportEnvironment.h"

#include "platform/SharedDataFolder.h"

QDate CReportEnvironment::Today() const {
    return QDate::currentDate();
}

CVardoDirectoryPath CReportEnvironment::SharedDataFolder() const {
    return ::SharedDataFolder();
}

bool CReportEnvironment::StartDetached(const QString& /*program*/, const QStringList& /*arguments*/) {
    return false;
}

bool CReportEnvironment::OpenWebPage(const CAtlString& /*address*/) {
    return false;
}

bool CReportEnvironment::ConfirmSelfUpdate() {
    return false;
}

void CReportEnvironment::WarnSelfUpdateFailed() {}
