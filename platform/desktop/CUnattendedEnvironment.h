// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The world around a program that only looks.
#pragma once

#include "platform/desktop/IEnvironment.h"
#include "platform/files/CVardoDirectoryPath.h"

#include <QCoreApplication>

// The machine's date and one shared data folder: it starts nothing and opens nothing.
class CUnattendedEnvironment : public IEnvironment {
public:
    // With an empty folder nothing is installed.
    explicit CUnattendedEnvironment(const CVardoDirectoryPath& sharedDataFolder)
        : folder_(sharedDataFolder) {}

    CVardoDirectoryPath SharedDataFolder() const override { return folder_; }

private:
    CVardoDirectoryPath folder_;
};

// The parent of the executable's folder, then "share"; empty when the executable's folder has no parent. GUI
// thread, while a QCoreApplication exists.
inline CVardoDirectoryPath SharedDataFolder() {
    CVardoDirectoryPath folder{CAtlString(QCoreApplication::applicationDirPath())};
    if (!folder.RemoveLastComponent())
        return {};
    folder.Append("share");
    return folder;
}
