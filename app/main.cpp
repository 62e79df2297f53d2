// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The entry point.
#include "app/RunApplication.h"
#include "platform/desktop/BrokenPipes.h"

int main(int argc, char** argv) {
    IgnoreBrokenPipes();
    RunApplication(argc, argv);
    return 0;
}
