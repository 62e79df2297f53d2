// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The entry point of the report.
#include "app/report/RunReport.h"

int main(int argc, char** argv) {
    return RunReport(argc, argv);
}
