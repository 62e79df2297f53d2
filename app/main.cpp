// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The entry point.
#include <QApplication>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    return 0;
}
