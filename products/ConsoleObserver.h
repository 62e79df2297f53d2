// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Who is told what products decide when nobody else wants to know.
#pragma once

#include "products/IDecisionObserver.h"

// One for the whole process. For each installed version that a disabler is compared with, it writes a line
// with the keys of both on standard output.
IDecisionObserver& ConsoleObserver();
