// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The entry point of the test programs that need a QApplication.
#include <gtest/gtest.h>
#include <QApplication>
#include <cstdlib>

#include "platform/desktop/StandardStreams.h"
#include "support/Sandbox.h"

int main(int argc, char** argv) {
    EnterSandbox();
    SecureStandardStreams();
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
