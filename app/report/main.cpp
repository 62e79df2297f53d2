// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The entry point of the report.
#include "app/report/RunReport.h"
#include "platform/BrokenPipes.h"

int main(int argc, char** argv) {
    IgnoreBrokenPipes();
    return RunReport(argc, argv);
}
