// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/desktop/BrokenPipes.h"
#include "publish/FolderProgram.h"

#include <QCoreApplication>
#include <iostream>

int main(int argc, char** argv) {
    IgnoreBrokenPipes();
    const QCoreApplication application(argc, argv);
    return RunCatalogCheck(QCoreApplication::arguments(), std::cout, std::cerr);
}
