// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The entry point.
#include "app/RunApplication.h"

int main(int argc, char** argv) {
    RunApplication(argc, argv);
    return 0;
}
