// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/desktop/CUnattendedEnvironment.h"

#include <QCoreApplication>

CVardoDirectoryPath SharedDataFolder() {
    CVardoDirectoryPath folder{CAtlString(QCoreApplication::applicationDirPath())};
    if (!folder.RemoveLastComponent())
        return {};
    folder.Append("share");
    return folder;
}
