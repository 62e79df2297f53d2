// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The entry point of each of the maker's programs, which differ in RUN alone.
#include "platform/desktop/StandardStreams.h"
#include "publish/FolderProgram.h"

#include <QCoreApplication>
#include <iostream>

int main(int argc, char** argv) {
    SecureStandardStreams();
    const QCoreApplication application(argc, argv);
    return RUN(QCoreApplication::arguments(), std::cout, std::cerr);
}
