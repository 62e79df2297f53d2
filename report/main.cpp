// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The entry point of the report.
#include "platform/desktop/BrokenPipes.h"
#include "report/RunReport.h"

int main(int argc, char** argv) {
    IgnoreBrokenPipes();
    return RunReport(argc, argv);
}
