// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "publish/RunCatalogCheck.h"
#include "platform/desktop/BrokenPipes.h"

#include <QCoreApplication>
#include <iostream>

int main(int argc, char** argv) {
    IgnoreBrokenPipes();
    const QCoreApplication application(argc, argv);
    return RunCatalogCheck(QCoreApplication::arguments(), std::cout, std::cerr);
}
